// A view and a cell of the program's own: a meter that a press mutes, and a button with a heart.
#include <QApplication>
#include <QHBoxLayout>
#include <cstdio>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"
#include "tessaluna/platform/cells/NSButtonCell.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

using namespace tessaluna::platform;
using TessalunaUIKit::TessalunaStyleKit;

class Meter : public NSView, public NSAccessibilityButton {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  using NSView::NSView;

  void setLevel(double level) {
    level_ = level;
    setNeedsDisplay(true);
  }
  CGSize intrinsicContentSize() const override { return {120, 12}; }
  void drawRect(CGRect) override {
    (isMuted_ ? NSColor::lightGrayColor() : NSColor::controlTextColor())->setFill();
    NSRectFill({0, 0, bounds().size.width * level_, bounds().size.height});
  }

  void mouseDown(const Ref<NSEvent>&) override { accessibilityPerformPress(); }
  bool acceptsFirstResponder() const override { return true; }
  void keyDown(const Ref<NSEvent>& event) override {
    if (event->characters() == " ") accessibilityPerformPress();
    else NSView::keyDown(event);
  }
  std::string accessibilityLabel() const override { return isMuted_ ? "Unmute" : "Mute"; }
  bool accessibilityPerformPress() override {
    isMuted_ = !isMuted_;
    setNeedsDisplay(true);
    return true;
  }

 private:
  double level_ = 0;
  bool isMuted_ = false;
};
const ClassInfo Meter::staticClassInfo{.name = "Meter", .base = &NSView::staticClassInfo};

class HeartCell : public NSButtonCell {
 public:
  using NSButtonCell::NSButtonCell;
  Ref<NSCell> copy() const override { return make<HeartCell>(*this); }
  CGSize cellSize() const override { return {24, 24}; }
  void drawWithFrame(CGRect frame, NSView&) override { TessalunaStyleKit::imageOfMoodLove()->drawInRect(frame); }
};

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  const auto application = NSApplication::sharedApplication();
  registerClass<Meter>();

  const auto meter = make<Meter>(CGRect{0, 0, 120, 12});
  meter->setLevel(0.6);
  const auto heart = make<NSButton>(CGRect{0, 0, 24, 24});
  heart->setCell(make<HeartCell>());
  heart->setTitle("Love");
  heart->setAction([] { std::puts("loved"); });

  QWidget window;
  auto* row = new QHBoxLayout(&window);
  row->addWidget(new tessaluna::backend::qt::QtViewWidget(meter));
  row->addWidget(new tessaluna::backend::qt::QtViewWidget(heart));
  window.show();
  return QApplication::exec();
}
