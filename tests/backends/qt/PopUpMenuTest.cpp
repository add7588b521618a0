#include "tessaluna/backends/qt/PopUpMenu.h"

#include <QMenu>

#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

class PopUpMenuTest : public QtTest {
 protected:
  using Choice = std::optional<std::size_t>;

  void open() {
    window->orderFront(nullptr);
    desktop.popUpMenu(*window->nativeWindow(), {40, 50},
                      {{.title = "Play & pause"},
                       {.title = "", .isSeparator = true},
                       {.title = "Favorite", .isChecked = true},
                       {.title = "Remove", .isEnabled = false}},
                      [this](Choice choice) { choices.push_back(choice); });
    settle();
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
  ASSERT_EQ(actions.size(), 4);
  EXPECT_EQ(actions[0]->text(), "Play && pause");
  EXPECT_TRUE(actions[1]->isSeparator());
  EXPECT_TRUE(actions[2]->isChecked());
  EXPECT_FALSE(actions[3]->isEnabled());
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
