#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  // The messages to and from the compositor are written to standard error, where the tests read them.
  qputenv("WAYLAND_DEBUG", "client");
  testing::InitGoogleTest(&argc, argv);
  const QApplication qt(argc, argv);
  return RUN_ALL_TESTS();
}
