// A completion pop-up that opens under a resting pointer.

#include "tests/desktop/QtDesktop.h"
#include "tests/harness/AccessiblePlayer.h"

using namespace tessaluna::platform;

namespace {

class PopUpUnderPointer : public harness::QtDesktop, protected harness::AccessiblePlayer {
 protected:
  PopUpUnderPointer() { window->makeKeyAndOrderFront(nullptr); }
  void SetUp() override {
    ASSERT_TRUE(eventually([&] { return window->isKeyWindow(); }));
    settle();
  }

  // A place in the middle of a row of 20 points, as if the pop-up were already open.
  void movePointerToRow(int row, int right = 0) {
    const QPoint corner = of(field->cell())->rect().bottomLeft() + QPoint(30 + right, 1 + 2 + 20 * row + 10);
    xdotool({"mousemove", QString::number(corner.x()), QString::number(corner.y())});
  }
  std::string selected() const {
    const auto suggestion = controller->selectedSuggestion();
    return suggestion ? suggestion->label : "none";
  }
};

TEST_F(PopUpUnderPointer, AStillPointerSelectsNothingUntilItMoves) {
  movePointerToRow(2);
  begin({"a", "b", "c"});
  ASSERT_TRUE(eventually([&] { return qWindowOf(*controller->window()).isExposed(); }));
  settle();
  EXPECT_EQ(selected(), "a");
  suggest({"a"});
  settle();
  suggest({"a", "b", "c"});
  settle();
  EXPECT_EQ(selected(), "a") << "nor when the pop-up grows";
  movePointerToRow(2, 10);
  EXPECT_TRUE(eventually([&] { return selected() == "c"; })) << selected();
}

TEST_F(PopUpUnderPointer, APointerThatEntersSelectsAtOnce) {
  movePointerToRow(10);
  begin({"a", "b", "c"});
  ASSERT_TRUE(eventually([&] { return qWindowOf(*controller->window()).isExposed(); }));
  movePointerToRow(1);
  EXPECT_TRUE(eventually([&] { return selected() == "b"; })) << selected();
}

}  // namespace
