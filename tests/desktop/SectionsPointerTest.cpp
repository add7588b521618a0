// The gallery's side bar of sections under a real pointer and keyboard.
#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>

#include "gallery/sections/SectionsHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/containers/DisclosureHeaderView.h"
#include "tessaluna/uikit/containers/DisclosureView.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using gallery::SectionsHost;

namespace {

constexpr CGFloat headerHeight = 28;

// Observes a key that does nothing. Everything sent before it has arrived by then.
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
    collect(*host_.sideBar());
    EXPECT_EQ(sections_.size(), 5u);
  }
  ~SectionsPointer() override {
    NSLayoutConstraint::setConflictHandler(nullptr);
    xdotool({"mouseup", "1", "mousemove", "5", "1000"});
  }
  // From top to bottom: library, up next, later (which is within up next), about, notes.
  enum Section : std::size_t { Library, UpNext, Later, About, Notes };
  void collect(const NSView& view) {
    for (const Ref<NSView>& subview : view.subviews()) {
      if (auto section = std::dynamic_pointer_cast<DisclosureView>(subview)) sections_.push_back(std::move(section));
      collect(*subview);
    }
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
  // Each section is as high as its header or as its whole content with the header, and begins where the one above it ends.
  void expectWhole() {
    settle();
    for (const Ref<DisclosureView>& section : sections_) {
      const CGFloat content = section->contentView()->frame().size.height;
      EXPECT_EQ(section->frame().size.height, headerHeight + (section->isDisclosed() ? content : 0));
      EXPECT_EQ(section->headerView()->disclosureButton()->title(), section->isDisclosed() ? "Hide" : "Show");
    }
    for (const auto& [upper, lower] : {std::pair{Library, UpNext}, {UpNext, About}, {About, Notes}})
      EXPECT_EQ(CGRectGetMaxY(sections_[upper]->frame()), sections_[lower]->frame().origin.y) << upper;
  }

  SectionsHost host_;
  std::vector<Ref<DisclosureView>> sections_;
  QWidget window_;
  tessaluna::backend::qt::QtViewWidget* widget_ = new tessaluna::backend::qt::QtViewWidget(host_.sideBar());
};

TEST_F(SectionsPointer, TheButtonShowsUnderThePointerAndItsClickFoldsAndOpens) {
  const Ref<NSButton> button = sections_[About]->headerView()->disclosureButton();
  EXPECT_TRUE(button->isHidden());
  moveTo(placeOf(*sections_[About]->headerView()));
  ASSERT_TRUE(eventually([&] { return !button->isHidden(); }));
  moveTo(placeOf(*button));
  xdotool({"click", "1"});
  ASSERT_TRUE(eventually([&] { return !sections_[About]->isDisclosed(); }));
  ASSERT_TRUE(areAllAtRest());
  settle();
  EXPECT_EQ(sections_[About]->frame().size.height, headerHeight);
  moveTo(placeOf(*sections_[UpNext]->headerView()));
  EXPECT_TRUE(eventually([&] { return button->isHidden(); }));
}

TEST_F(SectionsPointer, TheKeyboardFoldsAndOpensWithoutAPointer) {
  window_.setFocus();
  // Tab goes to the selected item, and Down twice from there to the next heading.
  xdotool({"key", "Tab", "key", "Down", "key", "Down", "key", "space"});
  ASSERT_TRUE(eventually([&] { return !sections_[UpNext]->isDisclosed(); }));
  ASSERT_TRUE(areAllAtRest());
  xdotool({"key", "Return"});
  EXPECT_TRUE(eventually([&] { return sections_[UpNext]->isDisclosed(); }));
  ASSERT_TRUE(areAllAtRest());
}

// Sections are clicked while they move and while the section around them moves, the window becomes wider and narrower, and texts
// grow.
TEST_F(SectionsPointer, WhateverHappensMeanwhileEverySectionIsWholeInTheEnd) {
  for (int round = 0; round < 3; ++round) {
    moveTo(placeOf(*sections_[UpNext]->headerView()));
    moveTo(placeOf(*sections_[UpNext]->headerView()->disclosureButton()));
    xdotool({"click", "--repeat", "3", "--delay", "40", "1"});
    host_.sideBar()->setIsOpen("Later", round == 1);
    window_.resize(420, 400);
    host_.addLine();
    host_.sideBar()->setIsOpen("Notes", round == 2);
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
    for (const Section i : {Library, UpNext, About, Notes}) EXPECT_EQ(sections_[i]->frame().size.height, headerHeight) << i;
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
