// A Qt backend with its application, for one test, with functions that wait for the window system.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <gtest/gtest.h>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/windows/NSApplication.h"

namespace harness {

class QtDesktop : public testing::Test {
 protected:
  QtDesktop() { tessaluna::platform::NSApplication::sharedApplication(); }
  ~QtDesktop() override { tessaluna::platform::NSApp = nullptr; }

  // Handles events until the condition is true; false after half a minute.
  template <class Condition>
  static bool eventually(Condition condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
      if (timer.elapsed() > 30000) return false;
      QApplication::processEvents();
      QThread::msleep(2);
    }
    return true;
  }
  // Handles events for long enough that everything under way has happened.
  static void settle() {
    for (int i = 0; i < 20; ++i) {
      QApplication::processEvents();
      QThread::msleep(2);
    }
  }

  // The hands of a user: makes the X server move, press and type. When it returns, all events are sent and most have arrived.
  static void xdotool(const QStringList& arguments) {
    QProcess hands;
    hands.start("xdotool", arguments);
    ASSERT_TRUE(eventually([&] { return hands.state() == QProcess::NotRunning; }));
    ASSERT_EQ(hands.exitCode(), 0);
    settle();
  }

 private:
  tessaluna::backend::qt::QtBackend desktop_;
};

// The target of a button: counts its clicks.
class ClickCount : public tessaluna::platform::NSObject {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  void clicked(tessaluna::platform::NSObject*) { ++count; }
  int count = 0;
};

inline constexpr tessaluna::platform::Selector clickCountSelectors[] = {
    tessaluna::platform::action<&ClickCount::clicked>("clicked:")};
inline const tessaluna::platform::ClassInfo ClickCount::staticClassInfo{
    .name = "harness.ClickCount", .base = &tessaluna::platform::NSObject::staticClassInfo, .selectors = clickCountSelectors};

}  // namespace harness
