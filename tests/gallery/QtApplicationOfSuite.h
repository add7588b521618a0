// A QApplication without a display, from the first test of a suite to its last. The suite's class derives from it and from
// testing::Test, and has using declarations for its SetUpTestSuite and TearDownTestSuite.
#pragma once

#include <QApplication>

namespace gallery {

class QtApplicationOfSuite {
 protected:
  static void SetUpTestSuite() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "gallery";
    static char* arguments[] = {name, nullptr};
    application = new QApplication(count, arguments);
  }
  static void TearDownTestSuite() {
    delete application;
    application = nullptr;
  }

  static inline QApplication* application = nullptr;
};

}  // namespace gallery
