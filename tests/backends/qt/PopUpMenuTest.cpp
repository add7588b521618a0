#include "tessaluna/backends/qt/PopUpMenu.h"

#include <QMenu>
#include <QPointer>

#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

class PopUpMenuTest : public QtTest {
 protected:
  using Choice = std::optional<std::size_t>;

  std::unique_ptr<NativeMenu> open(const MenuPlace& place = {.over = {200, 300, 0, 0}, .entry = {}}) {
    window->orderFront(nullptr);
    auto menu = desktop.popUpMenu(*window->nativeWindow(), place,
                                  {{.number = 0, .title = "Play & pause"},
                                   {.number = 1, .title = "", .isSeparator = true},
                                   {.number = 2, .title = "Favorite", .mark = MenuMark::Check},
                                   {.number = 3, .title = "Remove", .isEnabled = false},
                                   {.number = 4,
                                    .title = "Add to",
                                    .hasSubmenu = true,
                                    .submenu = {{.number = 5, .title = "Queue"}, {.number = 6, .title = "List"}}}},
                                  [this](Choice choice) { choices.push_back(choice); });
    settle();
    return menu;
  }

  static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

  Ref<NSWindow> window = make<NSWindow>(CGRect{10, 20, 100, 100}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  std::vector<Choice> choices;
};

}  // namespace

TEST_F(PopUpMenuTest, ShowsItsEntries) {
  open();
  ASSERT_NE(openMenu(), nullptr);
  const QList<QAction*> actions = openMenu()->actions();
  ASSERT_EQ(actions.size(), 5);
  EXPECT_EQ(actions[0]->text(), "Play && pause");
  EXPECT_TRUE(actions[1]->isSeparator());
  EXPECT_TRUE(actions[2]->isChecked());
  EXPECT_FALSE(actions[3]->isEnabled());
  ASSERT_NE(actions[4]->menu(), nullptr);
  EXPECT_EQ(actions[4]->menu()->actions()[1]->text(), "List");
}

TEST_F(PopUpMenuTest, ShowsImagesDashesIndentationAndKeys) {
  window->orderFront(nullptr);
  const auto image = NSImage::imageWithSize({16, 16}, false, [](CGRect frame) {
    NSColor::blueColor()->setFill();
    NSRectFill(frame);
    return true;
  });
  desktop.popUpMenu(*window->nativeWindow(), {.over = {}, .entry = {}},
                    {{.number = 0, .title = "Image", .image = image},
                     {.number = 1, .title = "Mixed", .mark = MenuMark::Dash},
                     {.number = 2, .title = "Deep", .indentation = 2},
                     {.number = 3,
                      .title = "Key",
                      .keyEquivalent = "p",
                      .keyEquivalentModifiers = NSEventModifierFlagControl | NSEventModifierFlagShift},
                     {.number = 4, .title = "Both", .mark = MenuMark::Dash, .image = image}},
                    [](Choice) {});
  settle();
  ASSERT_NE(openMenu(), nullptr);
  const QList<QAction*> actions = openMenu()->actions();
  EXPECT_EQ(actions[0]->icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::blue));
  const QImage dash = actions[1]->icon().pixmap(16, 16).toImage();
  EXPECT_GT(dash.pixelColor(dash.width() / 2, dash.height() / 2).alpha(), 128);
  EXPECT_EQ(dash.pixelColor(0, 0).alpha(), 0);
  QPalette red;
  red.setColor(QPalette::WindowText, Qt::red);
  QApplication::setPalette(red);
  const QImage redDash = actions[1]->icon().pixmap(16, 16).toImage();
  EXPECT_EQ(redDash.pixelColor(redDash.width() / 2, redDash.height() / 2), QColor(Qt::red));
  QApplication::setPalette(QPalette());
  EXPECT_EQ(actions[2]->text(), "      Deep");
  EXPECT_TRUE(actions[2]->icon().isNull());
  EXPECT_EQ(actions[4]->icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::blue));
  QCoreApplication::setAttribute(Qt::AA_DontShowIconsInMenus);  // the program's own wish
  for (const QAction* action : actions) EXPECT_TRUE(action->isIconVisibleInMenu());
  QCoreApplication::setAttribute(Qt::AA_DontShowIconsInMenus, false);
  EXPECT_EQ(actions[3]->text(), "Key\tCtrl+Shift+P");
}

TEST_F(PopUpMenuTest, IsSearchedByTyping) {
  const int interval = QApplication::keyboardInputInterval();
  const AtEndOfScope restore([&] { QApplication::setKeyboardInputInterval(interval); });
  QApplication::setKeyboardInputInterval(1000000);  // however slow the program is, the keys are of one word
  window->orderFront(nullptr);
  desktop.popUpMenu(*window->nativeWindow(), {.over = {200, 300, 0, 0}, .entry = {}},
                    {{.number = 0, .title = "Play"},
                     {.number = 1, .title = "Pause", .isEnabled = false},
                     {.number = 2, .title = "Queue & list", .indentation = 1},
                     {.number = 3, .title = "Queue && rest"},
                     {.number = 4, .title = "Previous"}},
                    [this](Choice choice) { choices.push_back(choice); });
  settle();
  ASSERT_NE(openMenu(), nullptr);
  const QList<QAction*> actions = openMenu()->actions();
  QTest::keyClicks(openMenu(), "pr");
  EXPECT_EQ(openMenu()->activeAction(), actions[4]);
  QTest::keyClick(openMenu(), 'q', Qt::ControlModifier);
  EXPECT_EQ(openMenu()->activeAction(), actions[4]);
  openMenu()->hide();
  settle();
  desktop.popUpMenu(*window->nativeWindow(), {.over = {200, 300, 0, 0}, .entry = {}},
                    {{.number = 0, .title = "Pause", .isEnabled = false},
                     {.number = 1, .title = "Queue && rest"},
                     {.number = 2, .title = "Queue & list", .indentation = 1},
                     {.number = 3, .title = "Play"}},
                    [](Choice) {});
  settle();
  ASSERT_NE(openMenu(), nullptr);
  const QList<QAction*> others = openMenu()->actions();
  QTest::keyClicks(openMenu(), "queue & l");
  EXPECT_EQ(openMenu()->activeAction(), others[2]);
}

TEST_F(PopUpMenuTest, ADisabledEntryIsNotFoundByTyping) {
  window->orderFront(nullptr);
  desktop.popUpMenu(*window->nativeWindow(), {.over = {200, 300, 0, 0}, .entry = {}},
                    {{.number = 0, .title = "Pause", .isEnabled = false}, {.number = 1, .title = "Play"}}, [](Choice) {});
  settle();
  ASSERT_NE(openMenu(), nullptr);
  QTest::keyClick(openMenu(), 'p');
  EXPECT_EQ(openMenu()->activeAction(), openMenu()->actions()[1]);
}

TEST_F(PopUpMenuTest, ALetterGoesToTheNextEntryThatBeginsWithIt) {
  window->orderFront(nullptr);
  desktop.popUpMenu(
      *window->nativeWindow(), {.over = {200, 300, 0, 0}, .entry = 0},
      {{.number = 0, .title = "Play"}, {.number = 1, .title = "", .isSeparator = true}, {.number = 2, .title = "Previous"}},
      [](Choice) {});
  settle();
  ASSERT_NE(openMenu(), nullptr);
  ASSERT_EQ(openMenu()->activeAction(), openMenu()->actions()[0]);
  QTest::keyClick(openMenu(), 'p');
  EXPECT_EQ(openMenu()->activeAction(), openMenu()->actions()[2]);
}

TEST_F(PopUpMenuTest, IsAboveItsWindowAndLeavesNothingBehind) {
  open();
  ASSERT_NE(openMenu(), nullptr);
  const QPointer<QMenu> menu = openMenu();
  EXPECT_EQ(menu->windowHandle()->transientParent(), &qWindowOf(*window));
  menu->hide();
  settle();
  EXPECT_FALSE(menu);
}

TEST_F(PopUpMenuTest, HangsBelowARectangle) {
  open({.over = {200, 300, 50, 20}, .entry = {}});
  ASSERT_NE(openMenu(), nullptr);
  EXPECT_EQ(openMenu()->pos(), qtPointOf({200, 300}));
}

TEST_F(PopUpMenuTest, AnEntryLiesInTheMiddleOfARectangleAndTheMenuIsAsWideAsAsked) {
  const CGRect over{20, 300, 250, 60};  // the menu fits on the screen at every scale
  open({.over = over, .entry = 2, .minimumWidth = over.size.width});
  ASSERT_NE(openMenu(), nullptr);
  const QRect entry = openMenu()->actionGeometry(openMenu()->actions()[2]);
  const QPoint onScreen = openMenu()->mapToGlobal(entry.center());
  EXPECT_NEAR(onScreen.y(), qtPointOf({0, CGRectGetMidY(over)}).y(), 1);
  EXPECT_EQ(openMenu()->x(), 20);
  EXPECT_GE(openMenu()->width(), 250);
  EXPECT_EQ(openMenu()->activeAction(), openMenu()->actions()[2]);
}

TEST_F(PopUpMenuTest, AnEntryHasItsCornerAtAPoint) {
  open({.over = {200, 300, 0, 0}, .entry = 2});
  ASSERT_NE(openMenu(), nullptr);
  const QRect entry = openMenu()->actionGeometry(openMenu()->actions()[2]);
  EXPECT_EQ(openMenu()->mapToGlobal(entry.topLeft()).y(), qtPointOf({0, 300}).y());
}

TEST_F(PopUpMenuTest, AChoiceInASubmenuIsToldByItsNumber) {
  open();
  ASSERT_NE(openMenu(), nullptr);
  openMenu()->actions()[4]->menu()->actions()[1]->trigger();
  openMenu()->hide();
  settle();
  EXPECT_EQ(choices, std::vector<Choice>{6});
}

TEST_F(PopUpMenuTest, ClosedByTheProgramItChoosesNothing) {
  const std::unique_ptr<NativeMenu> menu = open();
  ASSERT_NE(openMenu(), nullptr);
  menu->close();
  settle();
  EXPECT_EQ(choices, std::vector<Choice>{std::nullopt});
  EXPECT_EQ(openMenu(), nullptr);
  menu->close();
}

TEST_F(PopUpMenuTest, ChoiceIsToldByItsNumber) {
  open();
  ASSERT_NE(openMenu(), nullptr);
  QTest::keyClick(openMenu(), Qt::Key_Down);
  QTest::keyClick(openMenu(), Qt::Key_Down);
  QTest::keyClick(openMenu(), Qt::Key_Return);
  settle();
  EXPECT_EQ(choices, std::vector<Choice>{2});
  EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(PopUpMenuTest, ClosingItChoosesNothing) {
  open();
  ASSERT_NE(openMenu(), nullptr);
  QTest::keyClick(openMenu(), Qt::Key_Escape);
  settle();
  EXPECT_EQ(choices, std::vector<Choice>{std::nullopt});
}

TEST_F(PopUpMenuTest, AnotherOneClosesTheFirst) {
  open();
  open();
  EXPECT_EQ(choices, std::vector<Choice>{std::nullopt});
  EXPECT_NE(openMenu(), nullptr);
}

}  // namespace tessaluna::backend::qt
