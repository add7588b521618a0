// The views that hold constraints, in trees that change; sizes that fit; interface files.
#include <gmock/gmock.h>

#include <stdexcept>

#include "tessaluna/platform/interface_files/NSNib.h"
#include "tests/platform/layout/ConstraintsWorld.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using NSLayoutConstraintTest = ConstraintsWorld;

constexpr std::string_view document = R"({"objects": [{"id": "row", "class": "NSView", "frame": [0, 0, 100, 20],
  "subviews": [{"id": "label", "class": "NSView",
                "properties": {"translatesAutoresizingMaskIntoConstraints": false, "contentHuggingPriorities": [300, 400]}}],
  "constraints": [
    {"class": "NSLayoutConstraint", "firstAttribute": "leading", "secondAttribute": "leading", "constant": 8,
     "outlets": {"firstItem": "label", "secondItem": "row"}},
    {"class": "NSLayoutConstraint", "firstAttribute": "width", "relation": "lessThanOrEqual", "constant": 30,
     "priority": 900, "identifier": "narrow", "outlets": {"firstItem": "label"}}]}]})";

}  // namespace

// Where constraints are held.

TEST_F(NSLayoutConstraintTest, ActivatingAddsItToTheNearestViewAboveBothItems) {
  const auto inner = addView(view);
  const auto within = constrain(inner, left, NSLayoutRelationEqual, view, left, 1);
  const auto across = constrain(inner, left, NSLayoutRelationEqual, other, left, 1);
  EXPECT_THAT(view->constraints(), ElementsAre(within));
  EXPECT_THAT(content->constraints(), ElementsAre(across));
  within->setActive(false);
  EXPECT_THAT(view->constraints(), IsEmpty());
  EXPECT_FALSE(within->isActive());
}

TEST_F(NSLayoutConstraintTest, AddingOneThatAnotherViewHasMovesIt) {
  const auto wide = size(view, width, 10);
  EXPECT_THAT(view->constraints(), ElementsAre(wide));
  content->addConstraint(wide);
  EXPECT_THAT(view->constraints(), IsEmpty());
  EXPECT_THAT(content->constraints(), ElementsAre(wide));
  EXPECT_EQ(laidOut(view).size.width, 10);
  view->removeConstraint(wide);
  EXPECT_TRUE(wide->isActive()) << "it is not here any more";
}

TEST_F(NSLayoutConstraintTest, ADescriptionSaysWhatTheConstraintSays) {
  EXPECT_EQ(equal(view, right, content, -20)->description(), "NSView \"one\".right = NSView.right - 20");
  EXPECT_EQ(constrain(view, width, NSLayoutRelationGreaterThanOrEqual, other, height, 3, 1000, 0.5)->description(),
            "NSView \"one\".width >= 0.5 * NSView \"two\".height + 3");
}

TEST_F(NSLayoutConstraintTest, AViewKeepsItsConstraintsAlive) {
  WeakRef<NSLayoutConstraint> weak = size(view, width, 10);
  EXPECT_FALSE(weak.expired());
  view->removeConstraints(view->constraints());
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSLayoutConstraintTest, AViewThatLeavesLosesConstraintsToOthersAndKeepsItsOwn) {
  placeAt(view, 30, 30);
  size(view, width, 50);
  size(view, height, 50);
  const auto inner = addView(view);
  placeAt(inner, 5, 5);
  size(inner, width, 7);
  EXPECT_EQ(laidOut(view).size.width, 50);
  view->removeFromSuperview();
  EXPECT_THAT(content->constraints(), IsEmpty());
  EXPECT_EQ(view->constraints().size(), 4u);
  // By itself it is a tree of its own.
  inner->constraints()[0]->setConstant(9);
  view->layoutSubtreeIfNeeded();
  EXPECT_EQ(inner->frame().size.width, 9);
  // And a part of the window again.
  content->addSubview(view);
  inner->constraints()[0]->setConstant(11);
  EXPECT_EQ(laidOut(inner).size.width, 11);
}

TEST_F(NSLayoutConstraintTest, ASubviewThatOutlivesItsTreeKeepsItsConstraints) {
  auto root = make<NSView>(CGRect{0, 0, 100, 100});
  const auto kept = addView(root);
  placeAt(kept, 1, 1);
  const auto wide = size(kept, width, 20);
  root->layoutSubtreeIfNeeded();
  root.reset();
  content->addSubview(kept);
  wide->setConstant(33);
  equal(kept, left, content, 0);
  EXPECT_EQ(laidOut(kept).size.width, 33);
}

TEST_F(NSLayoutConstraintTest, AViewBelowASubviewThatGoesKeepsItsConstraints) {
  auto root = make<ConstrainedView>(CGRect{0, 0, 100, 100});
  auto middle = addView(root);
  const auto inner = addView(middle), innermost = addView(inner);
  placeAt(inner, 1, 1);
  size(innermost, width, 7);
  equal(innermost, width, inner, 0);
  middle.reset();
  root.reset();
  content->addSubview(inner);
  placeAt(inner, 3, 3);
  EXPECT_EQ(laidOut(inner).size.width, 7);
}

TEST_F(NSLayoutConstraintTest, ConstraintsAreUpdatedBeforeTheyAreSolved) {
  placeAt(view, 0, 0);
  const auto wide = size(view, width, 10);
  window->layoutIfNeeded();
  int updates = 0;
  view->onUpdate = [&] {
    ++updates;
    wide->setConstant(70);
  };
  view->setNeedsUpdateConstraints(true);
  EXPECT_EQ(laidOut(view).size.width, 70);
  EXPECT_EQ(updates, 1);
  EXPECT_FALSE(view->needsUpdateConstraints());
}

TEST_F(NSLayoutConstraintTest, AViewIsUpdatedOnceAndAfterItsSubviews) {
  const auto inner = addView(view);
  placeAt(view, 0, 0);
  std::vector<std::string> updated;
  view->onUpdate = [&] { updated.push_back("view"); };
  inner->onUpdate = [&] { updated.push_back("inner"); };
  for (const auto& each : {view, inner, view, inner}) each->setNeedsUpdateConstraints(true);
  window->layoutIfNeeded();
  EXPECT_THAT(updated, ElementsAre("inner", "view"));
}

TEST_F(NSLayoutConstraintTest, AViewThatWaitsForItsUpdateGetsItInTheWindowThatItComesTo) {
  const auto root = make<ConstrainedView>(CGRect{0, 0, 50, 50});
  int updates = 0;
  root->onUpdate = [&] { ++updates; };
  root->setNeedsUpdateConstraints(true);
  content->addSubview(root);
  window->layoutIfNeeded();
  EXPECT_EQ(updates, 1);
}

TEST_F(NSLayoutConstraintTest, AViewThatLeavesWhileItWaitsForItsUpdateGetsItWhereItComesTo) {
  placeAt(view, 0, 0);
  const auto inner = addView(view);
  int updates = 0, updatesOfOther = 0;
  inner->onUpdate = [&] { ++updates; };
  other->onUpdate = [&] { ++updatesOfOther; };
  inner->setNeedsUpdateConstraints(true);
  other->setNeedsUpdateConstraints(true);
  view->removeFromSuperview();
  window->layoutIfNeeded();
  EXPECT_EQ(updates, 0);
  EXPECT_EQ(updatesOfOther, 1);
  const auto second = showWindow();
  window->close();
  window->setContentView(nullptr);
  second->contentView()->addSubview(view);
  second->layoutIfNeeded();
  EXPECT_EQ(updates, 1);
  EXPECT_FALSE(inner->needsUpdateConstraints());
}

TEST_F(NSLayoutConstraintTest, AFrameThatIsSetLastsUntilTheNextPass) {
  placeAt(view, 0, 0);
  size(view, width, 10);
  size(view, height, 10);
  window->layoutIfNeeded();
  view->setFrame({50, 50, 50, 50});
  EXPECT_EQ(laidOut(view), (CGRect{0, 140, 10, 10}));
}

// fittingSize.

TEST_F(NSLayoutConstraintTest, TheFittingSizeIsTheLeastThatTheConstraintsAllow) {
  equal(view, left, content, 0);
  size(view, width, 300, 40);
  const auto inner = addView(view);
  inner->intrinsic = {30, 12};
  for (const auto attribute : {left, top}) equal(inner, attribute, view, 4);
  for (const auto attribute : {right, bottom}) equal(inner, attribute, view, -6);
  EXPECT_EQ(view->fittingSize(), (CGSize{40, 22}));
  inner->intrinsic = {30, 50};
  inner->invalidateIntrinsicContentSize();
  EXPECT_EQ(view->fittingSize(), (CGSize{40, 60}));
}

TEST_F(NSLayoutConstraintTest, TheFittingSizeIsFreeAlongTheAxesThatConstraintsWithinTie) {
  const auto framed = make<NSView>(CGRect{0, 0, 70, 40});
  const auto inner = addView(framed);
  constrain(inner, height, NSLayoutRelationEqual, framed, width, 0);
  size(inner, height, 30);
  EXPECT_EQ(framed->fittingSize(), (CGSize{30, 40}));
}

TEST_F(NSLayoutConstraintTest, AViewWhoseOwnConstraintsLimitItFitsWithinThem) {
  const auto framed = make<NSView>(CGRect{0, 0, 40, 70});
  constrain(framed, height, NSLayoutRelationLessThanOrEqual, nullptr, NSLayoutAttributeNotAnAttribute, 24);
  EXPECT_EQ(framed->fittingSize(), (CGSize{40, 24}));
}

// Interface files.

TEST_F(NSLayoutConstraintTest, InterfaceFilesHoldConstraints) {
  const auto contents = make<NSNib>(document)->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto row = std::static_pointer_cast<NSView>(contents.topLevelObjects.at(0));
  ASSERT_EQ(row->constraints().size(), 2u);
  const auto& narrow = row->constraints()[1];
  EXPECT_EQ(narrow->description(), "\"narrow\"");
  EXPECT_EQ(narrow->priority(), 900);
  EXPECT_EQ(narrow->relation(), NSLayoutRelationLessThanOrEqual);
  const Ref<NSView> label = row->subviews()[0];
  EXPECT_EQ(label->contentHuggingPriorityForOrientation(NSLayoutConstraintOrientationVertical), 400);
  content->addSubview(row);
  EXPECT_EQ(laidOut(label).origin.x, 8);
}

TEST_F(NSLayoutConstraintTest, AConstraintOfAnInterfaceFileThatMakesNoSenseIsAnError) {
  const auto errorOf = [](std::string_view constraint) {
    const std::string json = R"({"objects": [{"id": "row", "class": "NSView", "constraints": [)" + std::string(constraint) +
                             R"(]}, {"id": "elsewhere", "class": "NSView"}]})";
    return make<NSNib>(json)->instantiateWithOwner(nullptr).error.value_or("");
  };
  EXPECT_THAT(errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "width"})"), HasSubstr("an item for each"));
  EXPECT_THAT(errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "left", "outlets": {"firstItem": "row"}})"),
              HasSubstr("needs an attribute of a second item"));
  EXPECT_THAT(
      errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "width", "outlets": {"firstItem": "elsewhere"}})"),
      HasSubstr("belongs to a view that contains both items"));
  EXPECT_THAT(errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "wide", "outlets": {"firstItem": "row"}})"),
              HasSubstr("firstAttribute"));
  EXPECT_THAT(errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "width", "priority": 0})"),
              HasSubstr("priority"));
}

// Errors.

TEST_F(NSLayoutConstraintTest, AfterASetterThatThrowsTheNextPassPlacesAllViews) {
  class Throwing : public ConstrainedView {
   public:
    using ConstrainedView::ConstrainedView;
    bool throwsNext = false;
    void setFrame(CGRect frame) override {
      if (std::exchange(throwsNext, false)) throw std::runtime_error("refused");
      ConstrainedView::setFrame(frame);
    }
  };
  const auto thrower = make<Throwing>(CGRect{});
  thrower->setTranslatesAutoresizingMaskIntoConstraints(false);
  content->addSubview(thrower);
  for (const Ref<NSView>& placed : {Ref<NSView>(view), Ref<NSView>(thrower), Ref<NSView>(other)}) {
    placeAt(placed, 1, 2);
    size(placed, width, 3);
    size(placed, height, 4);
  }
  thrower->throwsNext = true;
  EXPECT_THROW(window->layoutIfNeeded(), std::runtime_error);
  constexpr CGRect expected{1, 150 - 2 - 4, 3, 4};
  EXPECT_EQ(laidOut(view), expected);
  EXPECT_EQ(laidOut(other), expected);
  // A place that somebody else gives lasts until the next pass.
  other->setFrame({7, 7, 7, 7});
  EXPECT_EQ(laidOut(other), expected);
}

TEST_F(NSLayoutConstraintTest, AfterAnUpdateThatThrowsConstraintsPlaceViews) {
  view->onUpdate = [] { throw std::runtime_error("refused"); };
  view->setNeedsUpdateConstraints(true);
  EXPECT_THROW(window->layoutIfNeeded(), std::runtime_error);
  size(other, width, 30);
  EXPECT_EQ(laidOut(other).size.width, 30);
}
