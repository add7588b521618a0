// Constraints that contradict each other, and uses that make no sense.
#include <gmock/gmock.h>

#include <cmath>

#include "tests/platform/layout/ConstraintsWorld.h"

using namespace tessaluna::platform;
using testing::HasSubstr;

namespace {

using NSLayoutConstraintTest = ConstraintsWorld;

}  // namespace

// Conflicts.

TEST_F(NSLayoutConstraintTest, OfTwoThatConflictTheOneAddedLastGivesWayAndOneLineNamesThem) {
  placeAt(view, 0, 0);
  size(view, width, 10);
  const auto second = size(view, width, 30);
  second->setIdentifier("wide");
  EXPECT_EQ(laidOut(view).size.width, 10);
  ASSERT_EQ(conflicts.size(), 1u);
  EXPECT_EQ(conflicts[0], "Constraints conflict: \"wide\" gives way to NSView \"one\".width = 10");
}

TEST_F(NSLayoutConstraintTest, OneThatGaveWayHoldsOnceItCan) {
  placeAt(view, 0, 0);
  const auto first = size(view, width, 10);
  size(view, width, 30);
  EXPECT_EQ(laidOut(view).size.width, 10);
  first->setActive(false);
  EXPECT_EQ(laidOut(view).size.width, 30);
}

TEST_F(NSLayoutConstraintTest, AConflictWithAFrameNamesTheFrame) {
  const auto framed = make<NSView>(CGRect{20, 30, 40, 50});
  content->addSubview(framed);
  size(framed, width, 100);
  EXPECT_EQ(laidOut(framed).size.width, 40);
  ASSERT_EQ(conflicts.size(), 1u);
  EXPECT_THAT(conflicts[0], HasSubstr("gives way to the frame of NSView"));
}

TEST_F(NSLayoutConstraintTest, OneWhosePriorityChangesStillCountsAsAddedWhenItWas) {
  placeAt(view, 0, 0);
  const auto first = size(view, width, 10);
  size(view, width, 30);
  EXPECT_EQ(laidOut(view).size.width, 10);
  first->setPriority(900);
  EXPECT_EQ(laidOut(view).size.width, 30);
  first->setPriority(1000);
  EXPECT_EQ(laidOut(view).size.width, 10);
}

TEST_F(NSLayoutConstraintTest, AFrameThatFollowsInAnotherWayStillComesBeforeLaterConstraints) {
  const auto box = make<NSView>(CGRect{0, 0, 200, 150}), framed = make<NSView>(CGRect{20, 30, 40, 50});
  content->addSubview(box);
  box->addSubview(framed);
  placeAt(view, 0, 0);
  size(view, width, 10);
  constrain(view, width, NSLayoutRelationEqual, framed, width, 0);
  equal(other, top, content, 0);
  constrain(other, left, NSLayoutRelationEqual, framed, right, 0);
  EXPECT_EQ(laidOut(view).size.width, 10);
  framed->setAutoresizingMask(NSViewWidthSizable);
  framed->setFrame({20, 30, 60, 50});
  EXPECT_EQ(laidOut(other).origin.x, 80);
  EXPECT_EQ(view->frame().size.width, 10);
  for (const std::string& line : conflicts) EXPECT_THAT(line, HasSubstr(".width = NSView.width gives way to"));
}

TEST_F(NSLayoutConstraintTest, AHandlerMayRemoveWhatConflicts) {
  placeAt(view, 0, 0);
  size(view, width, 10);
  const auto second = size(view, width, 30);
  NSLayoutConstraint::setConflictHandler([&](const std::string&) { second->setActive(false); });
  EXPECT_EQ(laidOut(view).size.width, 10);
  EXPECT_FALSE(second->isActive());
}

// Bad uses.

TEST_F(NSLayoutConstraintTest, AttributesThatDoNotGoTogetherStopTheProgram) {
  const auto make = [&](NSLayoutAttribute a, NSLayoutAttribute b, CGFloat multiplier = 1, CGFloat constant = 0) {
    NSLayoutConstraint::constraintWithItem(view, a, NSLayoutRelationEqual, b ? content : nullptr, b, multiplier, constant);
  };
  EXPECT_DEATH(make(left, top), "cannot be combined");
  EXPECT_DEATH(make(left, leading), "cannot be combined");
  EXPECT_DEATH(make(width, left), "cannot be combined");
  EXPECT_DEATH(make(left, NSLayoutAttributeNotAnAttribute), "needs an attribute of a second item");
  EXPECT_DEATH(make(width, width, 0), "multiplier");
  EXPECT_DEATH(make(width, width, 1, NAN), "constant");
  const auto wide = size(view, width, 10);
  EXPECT_DEATH(wide->setConstant(INFINITY), "constant must be finite");
  for (const double priority : {0.0, -1.0, 1000.5, double(NAN)})
    EXPECT_DEATH(wide->setPriority(priority), "priority must be above 0");
}

TEST_F(NSLayoutConstraintTest, ItemsWithoutAViewAboveBothStopTheProgram) {
  const auto elsewhere = make<NSView>(CGRect{});
  const auto constraint = NSLayoutConstraint::constraintWithItem(view, left, NSLayoutRelationEqual, elsewhere, left, 1, 0);
  EXPECT_DEATH(constraint->setActive(true), "no view contains its items");
  EXPECT_DEATH(content->addConstraint(constraint), "belongs to a view that contains both items");
}
