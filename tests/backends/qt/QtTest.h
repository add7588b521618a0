// A desktop without a screen, and views that tell what happened to them.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QWindow>
#include <functional>
#include <memory>
#include <string>
#include <vector>
#include <QtTest/QTest>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtNativeWindow.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

// While it lives, the primary screen is that many device pixels high; otherwise it is 800.
class HeightOfPrimaryScreen {
 public:
  explicit HeightOfPrimaryScreen(int pixels);
  ~HeightOfPrimaryScreen();
};

// While it lives, the second screen is the primary one.
class SecondScreenAsPrimary {
 public:
  SecondScreenAsPrimary();
  ~SecondScreenAsPrimary();
};

class QtTest : public testing::Test {
 protected:
  ~QtTest() override { tessaluna::platform::NSApp = nullptr; }

  // Everything that waits is done, also what is done because of it.
  static void settle() {
    for (int i = 0; i < 5; ++i) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }

  static QWindow& qWindowOf(const tessaluna::platform::NSWindow& window) {
    return *dynamic_cast<QtNativeWindow&>(*window.nativeWindow()).qWindow();
  }

  QtBackend desktop;
  tessaluna::platform::Ref<tessaluna::platform::NSApplication> application =
      tessaluna::platform::NSApplication::sharedApplication();
};

// Of the whole program, once it is its event filter.
class TimerCount : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Timer;
    return false;
  }
  int count = 0;
};

// The target of controls.
class Clicks : public tessaluna::platform::NSObject {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  void clicked(tessaluna::platform::NSObject*) {
    ++count;
    if (then) then();
  }

  int count = 0;
  std::function<void()> then;
};

// Counts its drawings, takes the keyboard, and writes down keys and scrolls; what it takes is for a test to say.
class Witness : public tessaluna::platform::NSView {
 public:
  using NSView::NSView;

  void drawRect(tessaluna::platform::CGRect rect) override;
  bool acceptsFirstResponder() const override { return true; }
  void keyDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void scrollWheel(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseDragged(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseUp(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;

  std::vector<tessaluna::platform::CGRect> draws;
  std::vector<std::string> keys;
  std::vector<tessaluna::platform::CGSize> scrolls;
  std::vector<std::string> mouse;  // "down 1 (3, 4)": the click count and the place in the view
  bool takesKeys = true, takesScrolls = true;

 private:
  void noteMouse(const char* what, const tessaluna::platform::NSEvent& event);
};

}  // namespace tessaluna::backend::qt
