#include <QApplication>
#include <QScreen>
#include <cstring>
#include <iostream>
#include <set>

#include <gtest/gtest.h>

namespace {

// As a process of its own the program takes 200 pictures of a part of the screen, and writes the colors in each on a line.
void takePictures(const char* const numbers[4]) {
  int place[4];
  for (int i = 0; i < 4; ++i) place[i] = std::atoi(numbers[i]);
  std::cout << "ready" << std::endl;
  for (int i = 0; i < 200; ++i) {
    const QImage picture = QGuiApplication::primaryScreen()->grabWindow(0, place[0], place[1], place[2], place[3]).toImage();
    std::set<std::string> colors;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) colors.insert(picture.pixelColor(x, y).name().toStdString());
    for (const std::string& color : colors) std::cout << color << " ";
    std::cout << std::endl;
  }
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QApplication qt(argc, argv);
  if (argc == 6 && std::strcmp(argv[1], "camera") == 0) {
    takePictures(argv + 2);
    return 0;
  }
  return RUN_ALL_TESTS();
}
