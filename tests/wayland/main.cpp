#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  // What goes over the wire is written to standard error, where the tests read it.
  qputenv("WAYLAND_DEBUG", "client");
  testing::InitGoogleTest(&argc, argv);
  const QApplication qt(argc, argv);
  return RUN_ALL_TESTS();
}
