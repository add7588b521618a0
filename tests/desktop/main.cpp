#include <poll.h>

#include <QApplication>
#include <QScreen>
#include <cstring>
#include <iostream>
#include <set>
#include <utility>

#include <gtest/gtest.h>

namespace {

// In a process of its own, the program takes 200 pictures of a part of the screen, and writes the colors of each on one line.
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

// In a process of its own, the program watches a column of the screen until its input ends. Its arguments are x, top, height and
// a color. It writes where the color begins in the column, at first and whenever that changes.
void followColor(const char* const arguments[4]) {
  const int x = std::atoi(arguments[0]), top = std::atoi(arguments[1]), height = std::atoi(arguments[2]);
  const QColor color(arguments[3]);
  int last = -1;
  for (pollfd input{.fd = 0, .events = POLLIN, .revents = 0}; poll(&input, 1, 0) == 0;) {
    const QImage picture = QGuiApplication::primaryScreen()->grabWindow(0, x, top, 1, height).toImage();
    int y = 0;
    while (y < picture.height() && picture.pixelColor(0, y) != color) ++y;
    if (y == picture.height() || std::exchange(last, y) == y) continue;
    std::cout << y << std::endl;
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
  if (argc == 6 && std::strcmp(argv[1], "column") == 0) {
    followColor(argv + 2);
    return 0;
  }
  return RUN_ALL_TESTS();
}
