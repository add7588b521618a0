// A desktop without a screen, and views that tell what happened to them.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QWindow>
#include <QtTest/QTest>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "backends/qt/QtBackend.h"
#include "backends/qt/QtNativeWindow.h"
#include "platform/views/NSView.h"
#include "platform/windows/NSApplication.h"
#include "platform/windows/NSWindow.h"

namespace backend::qt {

class QtTest : public testing::Test {
 protected:
  ~QtTest() override { platform::NSApp = nullptr; }

  // Everything that waits is done, also what is done because of it.
  static void settle() {
    for (int i = 0; i < 5; ++i) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }

  static QWindow& qWindowOf(const platform::NSWindow& window) {
    return *dynamic_cast<QtNativeWindow&>(*window.nativeWindow()).qWindow();
  }

  QtBackend desktop;
  platform::Ref<platform::NSApplication> application = platform::NSApplication::sharedApplication();
};

// The target of controls.
class Clicks : public platform::NSObject {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  void clicked(platform::NSObject*) {
    ++count;
    if (then) then();
  }

  int count = 0;
  std::function<void()> then;
};

// Counts its drawings, takes the keyboard, and writes down keys and scrolls; what it takes is for a test to say.
class Witness : public platform::NSView {
 public:
  using NSView::NSView;

  void drawRect(platform::CGRect rect) override;
  bool acceptsFirstResponder() const override { return true; }
  void keyDown(const platform::Ref<platform::NSEvent>& event) override;
  void scrollWheel(const platform::Ref<platform::NSEvent>& event) override;
  void mouseDown(const platform::Ref<platform::NSEvent>& event) override;
  void mouseDragged(const platform::Ref<platform::NSEvent>& event) override;
  void mouseUp(const platform::Ref<platform::NSEvent>& event) override;

  std::vector<platform::CGRect> draws;
  std::vector<std::string> keys;
  std::vector<platform::CGSize> scrolls;
  std::vector<std::string> mouse;  // "down 1 (3, 4)": the click count and the place in the view
  bool takesKeys = true, takesScrolls = true;

 private:
  void noteMouse(const char* what, const platform::NSEvent& event);
};

}  // namespace backend::qt
