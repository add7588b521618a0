// The gallery's side bar of sections under a real pointer and keyboard.
#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>

#include "gallery/sections/SectionsHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/containers/DisclosureHeaderView.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using gallery::SectionsHost;

namespace {

constexpr CGFloat headerHeight = 26;

// Sees a key that does nothing. What was sent before it has arrived by then.
class KeyWitness : public QObject {
 public:
  KeyWitness() { qApp->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::KeyRelease && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F8) hasSeen = true;
    return false;
  }
  bool hasSeen = false;
};

class SectionsPointer : public harness::QtDesktop {
 protected:
  SectionsPointer() {
    NSLayoutConstraint::setConflictHandler([](const std::string& line) { ADD_FAILURE() << line; });
    auto* row = new QHBoxLayout(&window_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(widget_);
    xdotool({"mousemove", "5", "1000"});
    window_.resize(300, 520);
    window_.move(60, 80);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(eventually([&] { return window_.isActiveWindow(); }));
    settle();
    for (int i : {0, 1, 2}) sections_.push_back(sectionIn(*host_.sideBar(), i));
    sections_.push_back(sectionIn(*sections_[0]->contentView(), 1));
  }
  ~SectionsPointer() override {
    NSLayoutConstraint::setConflictHandler(nullptr);
    xdotool({"mouseup", "1", "mousemove", "5", "1000"});
  }
  static Ref<DisclosureView> sectionIn(const NSView& view, int index) {
    return std::dynamic_pointer_cast<DisclosureView>(Ref<NSView>(view.subviews()[std::size_t(index)]));
  }

  QPoint placeOf(const NSView& view) const {
    const CGRect frame = view.convertRectToView(view.bounds(), nullptr);
    const CGFloat height = view.window()->contentView()->bounds().size.height;
    return widget_->mapToGlobal(QPoint(int(CGRectGetMidX(frame)), int(height - CGRectGetMidY(frame))));
  }
  void moveTo(QPoint place) { xdotool({"mousemove", QString::number(place.x()), QString::number(place.y())}); }
  bool hasEverythingArrived() {
    const KeyWitness witness;
    xdotool({"key", "F8"});
    return eventually([&] { return witness.hasSeen; });
  }
  bool areAllAtRest() {
    return eventually([&] {
      return std::none_of(sections_.begin(), sections_.end(), [](const auto& section) { return section->isChanging(); });
    });
  }
  // Each section is as high as its header or as all that is in it, and begins where the one above it ends.
  void expectWhole() {
    settle();
    for (const Ref<DisclosureView>& section : sections_) {
      const CGFloat content = section->contentView()->frame().size.height;
      EXPECT_EQ(section->frame().size.height, headerHeight + (section->isDisclosed() ? content : 0));
      EXPECT_EQ(section->headerView()->disclosureButton()->title(), section->isDisclosed() ? "Hide" : "Show");
    }
    for (std::size_t i : {1u, 2u})
      EXPECT_EQ(CGRectGetMaxY(sections_[i]->frame()) + 1, sections_[i - 1]->frame().origin.y) << i;
  }

  SectionsHost host_;
  std::vector<Ref<DisclosureView>> sections_;  // the last one is within the first
  QWidget window_;
  tessaluna::backend::qt::QtViewWidget* widget_ = new tessaluna::backend::qt::QtViewWidget(host_.sideBar());
};

TEST_F(SectionsPointer, TheButtonShowsUnderThePointerAndItsClickFoldsAndOpens) {
  const Ref<NSButton> button = sections_[1]->headerView()->disclosureButton();
  EXPECT_TRUE(button->isHidden());
  moveTo(placeOf(*sections_[1]->headerView()));
  ASSERT_TRUE(eventually([&] { return !button->isHidden(); }));
  moveTo(placeOf(*button));
  xdotool({"click", "1"});
  ASSERT_TRUE(eventually([&] { return !sections_[1]->isDisclosed(); }));
  ASSERT_TRUE(areAllAtRest());
  settle();
  EXPECT_EQ(sections_[1]->frame().size.height, headerHeight);
  moveTo(placeOf(*sections_[0]->headerView()));
  EXPECT_TRUE(eventually([&] { return button->isHidden(); }));
}

TEST_F(SectionsPointer, TheKeyboardFoldsAndOpensWithoutAPointer) {
  window_.setFocus();
  xdotool({"key", "Tab", "key", "space"});
  ASSERT_TRUE(eventually([&] { return !sections_[0]->isDisclosed(); }));
  ASSERT_TRUE(areAllAtRest());
  xdotool({"key", "Return"});
  EXPECT_TRUE(eventually([&] { return sections_[0]->isDisclosed(); }));
  ASSERT_TRUE(areAllAtRest());
}

// Pressed while it moves, within one that moves, made wider and narrower meanwhile, and with texts that grow.
TEST_F(SectionsPointer, WhateverIsDoneMeanwhileEverySectionIsWholeInTheEnd) {
  for (int round = 0; round < 3; ++round) {
    moveTo(placeOf(*sections_[0]->headerView()));
    moveTo(placeOf(*sections_[0]->headerView()->disclosureButton()));
    xdotool({"click", "--repeat", "3", "--delay", "40", "1"});
    sections_[3]->toggleDisclosure(nullptr);
    window_.resize(420, 400);
    host_.addLine();
    sections_[2]->toggleDisclosure(nullptr);
    xdotool({"click", "1"});
    window_.resize(300, 520);
    host_.setDisclosed(round % 2 == 0);
    host_.removeLine();
    ASSERT_TRUE(hasEverythingArrived());
    ASSERT_TRUE(areAllAtRest());
    host_.setDisclosed(true);
    ASSERT_TRUE(areAllAtRest());
    expectWhole();
    host_.setDisclosed(false);
    ASSERT_TRUE(areAllAtRest());
    settle();
    for (std::size_t i : {0u, 1u, 2u}) EXPECT_EQ(sections_[i]->frame().size.height, headerHeight) << i;
    host_.setDisclosed(true);
    ASSERT_TRUE(areAllAtRest());
    expectWhole();
  }
}

TEST_F(SectionsPointer, AWindowThatClosesWhileItsSectionsMoveIsHarmless) {
  host_.setDisclosed(false);
  settle();
  window_.close();
  EXPECT_TRUE(areAllAtRest());
  window_.show();
  ASSERT_TRUE(eventually([&] { return window_.isVisible(); }));
  settle();
  for (const auto& section : sections_) EXPECT_FALSE(section->isDisclosed());
}

}  // namespace
