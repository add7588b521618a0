// Pop-up buttons, tabs and ratings under the X server's pointer and keyboard, which xdotool operates.
#include <QMenu>

#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/windows/NSScreen.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/cells/ExtPopUpButtonCell.h"
#include "tessaluna/uikit/cells/UnderlinedSegmentedCell.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

class RealCells : public harness::QtDesktop {
 protected:
  RealCells() {
    popUp->setCell(make<ExtPopUpButtonCell>());
    popUp->addItemsWithTitles({"Albums", "Artists", "Genres", "Labels"});
    popUp->menu()->setAutoenablesItems(false);
    popUp->menu()->insertItem(NSMenuItem::separatorItem(), 2);
    popUp->itemAtIndex(3)->setEnabled(false);  // "Genres"
    const auto cell = make<UnderlinedSegmentedCell>();
    tabs->setCell(cell);
    tabs->setSegmentCount(3);
    for (std::size_t i = 0; i < 3; ++i) tabs->setLabelForSegment("Tab " + std::to_string(i), i);
    stars->setEditable(true);
    for (const Ref<NSControl>& control : std::vector<Ref<NSControl>>{popUp, tabs, stars}) {
      control->setTarget(clicks);
      control->setAction("clicked:");
      window_->contentView()->addSubview(control);
    }
    window_->makeKeyAndOrderFront(nullptr);
    isReady = eventually([&] { return window_->isKeyWindow(); });
    settle();
  }
  ~RealCells() override { window_->close(); }

  // Moves it to a place in the control, from its upper left corner.
  void movePointerTo(const NSView& view, CGFloat x, CGFloat y) {
    const CGPoint point = window_->convertPointToScreen(view.convertPointToView({x, y}, nullptr));
    movePointerOnScreen(
        {static_cast<int>(point.x), static_cast<int>(NSScreen::mainScreen()->frame().size.height - point.y)});
  }
  static void movePointerOnScreen(QPoint point) {
    xdotool({"mousemove", QString::number(point.x()), QString::number(point.y())});
  }
  static void click() { xdotool({"click", "1"}); }
  static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  bool opens() {
    return eventually([] { return menu() != nullptr; });
  }
  static QPoint middleOf(const QString& title) {
    for (QAction* action : menu()->actions())
      if (action->text() == title) return menu()->mapToGlobal(menu()->actionGeometry(action).center());
    return {};
  }
  bool isChosen(const std::string& title, int actions) {
    return eventually([&] { return popUp->titleOfSelectedItem() == title && clicks->count == actions && !menu(); });
  }

  bool isReady = false;
  Ref<harness::ClickCount> clicks = make<harness::ClickCount>();
  Ref<NSPopUpButton> popUp = make<NSPopUpButton>(CGRect{20, 150, 160, 28});
  Ref<NSSegmentedControl> tabs = make<NSSegmentedControl>(CGRect{20, 100, 240, 30});
  Ref<NSLevelIndicator> stars = make<NSLevelIndicator>(CGRect{20, 60, 100, 14});

 private:
  Ref<NSWindow> window_ = make<NSWindow>(CGRect{300, 400, 300, 200}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
};

}  // namespace

TEST_F(RealCells, APopUpOpensWithTheCurrentItemOverTheButtonAndAClickChooses) {
  ASSERT_TRUE(isReady);
  popUp->selectItemWithTitle("Labels");
  movePointerTo(*popUp, 40, 14);
  const QPoint onButton = QCursor::pos();
  click();
  ASSERT_TRUE(opens());
  EXPECT_LE(std::abs(middleOf("Labels").y() - onButton.y()), 3);
  EXPECT_EQ(menu()->activeAction()->text(), "Labels");
  EXPECT_TRUE(menu()->activeAction()->isChecked());
  movePointerOnScreen(middleOf("Artists"));
  click();
  EXPECT_TRUE(isChosen("Artists", 1)) << popUp->titleOfSelectedItem() << clicks->count;
}

TEST_F(RealCells, OnePressDragAndReleaseChooses) {
  ASSERT_TRUE(isReady);
  movePointerTo(*popUp, 40, 14);
  xdotool({"mousedown", "1"});
  ASSERT_TRUE(opens());
  const QPoint from = QCursor::pos(), to = middleOf("Labels");
  for (int i = 1; i <= 4; ++i) movePointerOnScreen(from + (to - from) * i / 4);
  xdotool({"mouseup", "1"});
  EXPECT_TRUE(isChosen("Labels", 1)) << popUp->titleOfSelectedItem() << clicks->count;
}

TEST_F(RealCells, ADisabledItemAndASeparatorCannotBeChosenAndEscapeClosesTheMenu) {
  ASSERT_TRUE(isReady);
  movePointerTo(*popUp, 40, 14);
  click();
  ASSERT_TRUE(opens());
  movePointerOnScreen(middleOf("Genres"));
  click();
  settle();
  ASSERT_NE(menu(), nullptr);
  xdotool({"key", "Escape"});
  EXPECT_TRUE(isChosen("Albums", 0));
  EXPECT_FALSE(popUp->isHighlighted());
}

TEST_F(RealCells, KeysOpenMoveTypeAndChoose) {
  ASSERT_TRUE(isReady);
  popUp->window()->makeFirstResponder(popUp.get());
  xdotool({"key", "space"});
  ASSERT_TRUE(opens());
  xdotool({"key", "Down", "Return"});
  EXPECT_TRUE(isChosen("Artists", 1)) << popUp->titleOfSelectedItem();
  xdotool({"key", "Down"});
  ASSERT_TRUE(opens());
  xdotool({"key", "Down", "Return"});  // past the separator and the disabled item
  EXPECT_TRUE(isChosen("Labels", 2)) << popUp->titleOfSelectedItem();
}

TEST_F(RealCells, TypingSelectsTheItemThatBeginsWithIt) {
  ASSERT_TRUE(isReady);
  popUp->window()->makeFirstResponder(popUp.get());
  xdotool({"key", "space"});
  ASSERT_TRUE(opens());
  const auto isAt = [](const QString& title) {
    return eventually([&] { return menu() && menu()->activeAction() && menu()->activeAction()->text() == title; });
  };
  xdotool({"type", "ar"});
  EXPECT_TRUE(isAt("Artists"));
  QThread::msleep(static_cast<unsigned long>(QApplication::keyboardInputInterval()) + 100);
  xdotool({"type", "g"});  // a disabled item is not found
  xdotool({"type", "x"});
  EXPECT_TRUE(isAt("Artists"));
  QThread::msleep(static_cast<unsigned long>(QApplication::keyboardInputInterval()) + 100);
  xdotool({"type", "a"});
  EXPECT_TRUE(isAt("Albums"));
  xdotool({"type", "a"});
  EXPECT_TRUE(isAt("Artists"));
  xdotool({"key", "Return"});
  EXPECT_TRUE(isChosen("Artists", 1)) << popUp->titleOfSelectedItem();
}

TEST_F(RealCells, TabsFollowPressDragReleaseAndTheArrowKeys) {
  ASSERT_TRUE(isReady);
  movePointerTo(*tabs, 200, 15);
  click();
  EXPECT_TRUE(eventually([&] { return tabs->selectedSegment() == 2u && clicks->count == 1; }));
  movePointerTo(*tabs, 40, 15);
  xdotool({"mousedown", "1"});
  movePointerTo(*tabs, 120, 15);
  xdotool({"mouseup", "1"});
  EXPECT_EQ(tabs->selectedSegment(), 2u);
  EXPECT_EQ(clicks->count, 1);
  tabs->window()->makeFirstResponder(tabs.get());
  xdotool({"key", "Left"});
  EXPECT_TRUE(eventually([&] { return tabs->selectedSegment() == 1u && clicks->count == 2; }));
}

TEST_F(RealCells, StarsFollowPressDragReleaseAndTheArrowKeys) {
  ASSERT_TRUE(isReady);
  movePointerTo(*stars, 35, 7);
  xdotool({"mousedown", "1"});
  EXPECT_TRUE(eventually([&] { return stars->doubleValue() == 3; }));
  movePointerTo(*stars, 200, 7);
  xdotool({"mouseup", "1"});
  EXPECT_TRUE(eventually([&] { return stars->doubleValue() == 5 && clicks->count == 1; }));
  stars->window()->makeFirstResponder(stars.get());
  xdotool({"key", "Left"});
  EXPECT_TRUE(eventually([&] { return stars->doubleValue() == 4 && clicks->count == 2; }));
}
