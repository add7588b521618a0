#include "tessaluna/uikit/containers/DisclosureView.h"

#include <gmock/gmock.h>

#include <cmath>
#include <stdexcept>
#include <utility>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/time/durations.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/allocations.h"
#include "tests/harness/printing.h"
#include "tests/uikit/containers/sections.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr CGFloat openLimit = 32760;

struct DisclosureViewTest : harness::SectionsWorld {
  ~DisclosureViewTest() override {
    NSBundle::mainBundle()->setStringTable({});
    NSLayoutConstraint::setConflictHandler(nullptr);
  }
};

// As it comes.

TEST_F(DisclosureViewTest, StartsOpenAndUnmeasured) {
  const auto view = make<DisclosureView>(CGRect{0, 0, 10, 20});
  NSCoder coder(R"({"isDisclosed": false, "disclosedHeight": 7, "isChanging": true})");
  for (const auto& one : {view, make<DisclosureView>(coder)}) {
    EXPECT_TRUE(one->isDisclosed());
    EXPECT_FALSE(one->isChanging());
    EXPECT_EQ(one->disclosedHeight(), 0);
    EXPECT_EQ(one->headerView(), nullptr);
    EXPECT_EQ(one->contentView(), nullptr);
    EXPECT_TRUE(one->constraints().empty());
  }
  EXPECT_EQ(coder.firstUnknownKey(), std::nullopt);
}

TEST_F(DisclosureViewTest, AwakeItIsMeasuredAndHasOneConstraintOfItsOwn) {
  EXPECT_EQ(section->disclosedHeight(), 124);
  const auto own = collapse(*section);
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(own->firstItem(), section);
  EXPECT_EQ(own->firstAttribute(), NSLayoutAttributeHeight);
  EXPECT_EQ(own->relation(), NSLayoutRelationLessThanOrEqual);
  EXPECT_EQ(own->secondItem(), nullptr);
  EXPECT_EQ(own->secondAttribute(), NSLayoutAttributeNotAnAttribute);
  EXPECT_EQ(own->multiplier(), 1);
  EXPECT_EQ(own->constant(), openLimit);
  EXPECT_EQ(own->priority(), NSLayoutPriorityRequired);
  EXPECT_EQ(section->contentView()->frame().size.height, 100);
}

TEST_F(DisclosureViewTest, WakingOpensWhatPropertiesHadClosed) {
  section->setIsDisclosed(false);
  section->setIsChanging(true);
  section->removeConstraint(collapse(*section));
  section->awakeFromNib();
  EXPECT_TRUE(section->isDisclosed());
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureViewTest, WakingHidesTheButtonAlsoUnderTheMouseAndLeavesItsTitle) {
  EXPECT_TRUE(button()->isHidden());
  EXPECT_EQ(button()->title(), "?");
  user.moveTo(*window, {100, 590});
  button()->setHidden(false);
  section->removeConstraint(collapse(*section));
  section->awakeFromNib();
  EXPECT_TRUE(button()->isHidden());
}

// The table of states.

TEST_F(DisclosureViewTest, StatesAndConstantsOfEachPath) {
  struct State {
    bool isDisclosed, isChanging;
    CGFloat limit;
    bool operator==(const State&) const = default;
  };
  const auto state = [&] { return State{section->isDisclosed(), section->isChanging(), limit()}; };
  EXPECT_EQ(state(), (State{true, false, openLimit}));
  section->setDisclosureTo(false, true);  // closing
  EXPECT_EQ(state(), (State{true, true, 124}));
  finish();
  EXPECT_EQ(state(), (State{false, false, 24}));
  section->setDisclosureTo(true, true);  // opening
  EXPECT_EQ(state(), (State{false, true, 24}));
  EXPECT_EQ(section->frame().size.height, 24);  // nothing has jumped
  finish();
  EXPECT_EQ(state(), (State{true, false, openLimit}));
  section->setDisclosureTo(false, false);
  EXPECT_EQ(state(), (State{false, false, 24}));
  section->setDisclosureTo(true, false);
  EXPECT_EQ(state(), (State{true, false, openLimit}));
}

TEST_F(DisclosureViewTest, WhatIsBelowFollows) {
  EXPECT_EQ(topOf(below), 124);
  section->setDisclosureTo(false, false);
  EXPECT_EQ(topOf(below), 24);
  EXPECT_EQ(heightOf(section), 24);
  // The content is cut, and neither hidden nor made smaller.
  EXPECT_FALSE(section->contentView()->isHidden());
  EXPECT_EQ(section->contentView()->superview(), section.get());
  EXPECT_EQ(section->contentView()->frame().size.height, 100);
  section->setDisclosureTo(true, false);
  EXPECT_EQ(topOf(below), 124);
}

TEST_F(DisclosureViewTest, AnAnimationMovesSmoothlyFromOneHeightToTheOther) {
  section->toggleDisclosure(nullptr);
  CGFloat last = 124;
  for (int frame = 0; frame < 25; ++frame) {
    desktop.advance(defaultAnimationDuration / 25);
    const CGFloat height = heightOf(section);
    EXPECT_LE(height, last);
    EXPECT_LT(last - height, 12);
    EXPECT_EQ(topOf(below), height);
    last = height;
  }
  desktop.advance(0.02);
  EXPECT_EQ(heightOf(section), 24);
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureViewTest, AnAnimationBeginsAndEndsSlowly) {
  section->toggleDisclosure(nullptr);
  desktop.advance(defaultAnimationDuration / 5);
  EXPECT_GT(heightOf(section), 124 - 15);  // at one speed it would be 20 lower
  desktop.advance(defaultAnimationDuration * 3 / 5);
  EXPECT_LT(heightOf(section), 24 + 15);
}

TEST_F(DisclosureViewTest, TheAnimationTakesTheContextsDefault) {
  section->toggleDisclosure(nullptr);
  desktop.advance(defaultAnimationDuration * 0.9);
  EXPECT_TRUE(section->isChanging());
  desktop.advance(defaultAnimationDuration * 0.2);
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureViewTest, AtTheEndOfAnOpeningItIsFreeAtOnce) {
  section->setDisclosureTo(false, false);
  section->toggleDisclosure(nullptr);
  for (int frame = 0; frame < 100 && section->isChanging(); ++frame) desktop.advance(0.01);
  EXPECT_TRUE(section->isDisclosed());
  EXPECT_EQ(limit(), openLimit);
}

TEST_F(DisclosureViewTest, WithLessMotionItFoldsAtOnce) {
  desktop.setPrefersReducedMotion(true);
  section->toggleDisclosure(nullptr);
  EXPECT_EQ(heightOf(section), 24);
  desktop.settle();
  EXPECT_FALSE(section->isChanging());
  EXPECT_FALSE(section->isDisclosed());
}

// Edges.

TEST_F(DisclosureViewTest, ContentThatGrewWhileItWasClosedOpensToItsNewHeight) {
  section->setDisclosureTo(false, false);
  growContent(200);
  EXPECT_EQ(heightOf(section), 24);
  section->toggleDisclosure(nullptr);
  EXPECT_EQ(section->disclosedHeight(), 224);
  EXPECT_EQ(heightOf(section), 24);
  finish();
  EXPECT_EQ(heightOf(section), 224);
  EXPECT_EQ(topOf(below), 224);
}

TEST_F(DisclosureViewTest, ContentThatGrewWhileItWasClosedShowsAfterADirectOpeningToo) {
  section->setDisclosureTo(false, false);
  growContent(200);
  section->setDisclosureTo(true, false);
  EXPECT_EQ(section->disclosedHeight(), 224);
  EXPECT_EQ(section->frame().size.height, 224);
}

TEST_F(DisclosureViewTest, ADirectOpeningIsLaidOutAtOnceAndADirectClosingLater) {
  struct Counter : NSView {
    using NSView::NSView;
    void layout() override {
      NSView::layout();
      ++layouts;
    }
    int layouts = 0;
  };
  // A header is asked for its frame, which is laid out for that.
  section->headerView()->setParentDisclosure(nullptr);
  section->setHeaderView(nullptr);
  const auto counter = make<Counter>(CGRect{0, 0, 10, 10});
  section->contentView()->addSubview(counter);
  desktop.settle();
  counter->layouts = 0;
  counter->setNeedsLayout(true);
  section->setDisclosureTo(false, false);
  EXPECT_EQ(counter->layouts, 0);
  section->setDisclosureTo(true, false);
  EXPECT_EQ(counter->layouts, 1);
}

TEST_F(DisclosureViewTest, AnAnimatedOpeningIsLaidOutOpenToBeMeasuredAndThenFoldedAgain) {
  struct AsHighAsTheSection : NSView {
    using NSView::NSView;
    void setFrame(CGRect frame) override {
      NSView::setFrame(frame);
      heights.push_back(frame.size.height);
    }
    std::vector<CGFloat> heights;
  };
  const auto view = make<AsHighAsTheSection>(CGRect{});
  view->setTranslatesAutoresizingMaskIntoConstraints(false);
  section->addSubview(view);
  for (const NSLayoutAttribute edge : {NSLayoutAttributeTop, NSLayoutAttributeBottom})
    section->addConstraint(NSLayoutConstraint::constraintWithItem(view, edge, NSLayoutRelationEqual, section, edge, 1, 0));
  section->setDisclosureTo(false, false);
  window->layoutIfNeeded();
  view->heights.clear();
  section->setDisclosureTo(true, true);
  EXPECT_THAT(view->heights, ElementsAre(124, 24));
}

TEST_F(DisclosureViewTest, ContentThatGrowsWhileItIsOpenKeepsMovingTheSection) {
  section->setDisclosureTo(false, false);
  section->toggleDisclosure(nullptr);
  finish();
  growContent(300);
  EXPECT_EQ(heightOf(section), 324);
  EXPECT_EQ(section->disclosedHeight(), 124);
}

TEST_F(DisclosureViewTest, ClosingMeasuresNothing) {
  growContent(300);
  section->toggleDisclosure(nullptr);
  finish();
  EXPECT_EQ(section->disclosedHeight(), 124);
}

TEST_F(DisclosureViewTest, ClosingStartsFromThePresentHeight) {
  growContent(300);
  section->toggleDisclosure(nullptr);
  EXPECT_EQ(limit(), 324);
}

TEST_F(DisclosureViewTest, TwoQuickTogglesLeaveItWhereTheFirstWasGoing) {
  section->toggleDisclosure(nullptr);
  section->toggleDisclosure(nullptr);
  finish();
  EXPECT_FALSE(section->isDisclosed());
  EXPECT_EQ(heightOf(section), 24);
}

TEST_F(DisclosureViewTest, ADirectCallDuringAnAnimationIsLostToo) {
  section->toggleDisclosure(nullptr);
  desktop.advance(0.1);
  const CGFloat height = heightOf(section);
  section->setDisclosureTo(false, false);
  section->setDisclosureTo(true, false);
  EXPECT_TRUE(section->isChanging());
  EXPECT_EQ(heightOf(section), height);
  finish();
  EXPECT_FALSE(section->isDisclosed());
}

TEST_F(DisclosureViewTest, WhatItIsAlreadyChangesNothing) {
  section->setDisclosureTo(true, true);
  section->setDisclosureTo(true, false);
  EXPECT_FALSE(section->isChanging());
  EXPECT_EQ(limit(), openLimit);
  EXPECT_EQ(button()->title(), "?");
}

TEST_F(DisclosureViewTest, TheSettersStoreAndDoNothingElse) {
  section->setIsDisclosed(false);
  EXPECT_EQ(heightOf(section), 124);
  EXPECT_EQ(limit(), openLimit);
  section->setIsChanging(true);
  section->setDisclosureTo(true, false);
  EXPECT_FALSE(section->isDisclosed());  // it counts as changing
  section->setDisclosedHeight(3);
  EXPECT_EQ(heightOf(section), 124);
}

TEST_F(DisclosureViewTest, WithoutAHeaderItFoldsToNothing) {
  const Ref<DisclosureHeaderView> header = section->headerView();
  header->setParentDisclosure(nullptr);
  section->setHeaderView(nullptr);
  section->setDisclosureTo(false, false);
  EXPECT_EQ(heightOf(section), 0);
  section->toggleDisclosure(nullptr);
  finish();
  EXPECT_EQ(heightOf(section), 124);
  section->toggleDisclosure(nullptr);
  finish();
  EXPECT_EQ(heightOf(section), 0);
  EXPECT_EQ(header->disclosureButton()->title(), "?");
}

TEST_F(DisclosureViewTest, WithoutAButtonItFoldsAllTheSame) {
  section->headerView()->setDisclosureButton(nullptr);
  section->setDisclosureTo(false, false);
  EXPECT_FALSE(section->isDisclosed());
  section->toggleDisclosure(nullptr);
  finish();
  EXPECT_TRUE(section->isDisclosed());
}

TEST_F(DisclosureViewTest, BeforeItIsAwakeClosingStopsTheProgram) {
  const auto view = make<DisclosureView>(CGRect{0, 0, 10, 20});
  view->setDisclosureTo(true, true);  // which it counts as
  EXPECT_DEATH(view->setDisclosureTo(false, false), "collapseConstraint");
  EXPECT_DEATH(view->setDisclosureTo(false, true), "collapseConstraint");
  EXPECT_DEATH(view->toggleDisclosure(nullptr), "collapseConstraint");
  view->setIsDisclosed(false);
  EXPECT_DEATH(view->setDisclosureTo(true, false), "collapseConstraint");
  EXPECT_DEATH(view->setDisclosureTo(true, true), "collapseConstraint");
}

TEST_F(DisclosureViewTest, OneThatGoesDuringAnAnimationIsHarmless) {
  section->toggleDisclosure(nullptr);
  desktop.advance(0.1);
  const WeakRef<DisclosureView> weak = section;
  section->headerView()->setParentDisclosure(nullptr);
  section->removeFromSuperview();
  section.reset();
  EXPECT_TRUE(weak.expired());
  finish();
  EXPECT_EQ(bar->subviews().size(), 1u);
}

TEST_F(DisclosureViewTest, AThousandFoldsLeaveNothingBehind) {
  // Pressed again on the way and opened with an animation, or directly; only some with all their frames, which take long.
  const auto cycle = [&](int i) {
    desktop.setPrefersReducedMotion(i % 21 != 0);
    section->toggleDisclosure(nullptr);
    desktop.advance(0.01);
    section->toggleDisclosure(nullptr);
    growContent(60 + i % 7);
    desktop.advance(0.3);
    section->setDisclosureTo(true, i % 2 == 0);
    desktop.advance(0.3);
    nativeOf(*window).forgetPaints();
    ASSERT_TRUE(section->isDisclosed());
  };
  for (int i = 0; i < 42; ++i) cycle(i);
  const long before = harness::allocationsAlive;
  for (int i = 0; i < 1000; ++i) cycle(i);
  EXPECT_LE(harness::allocationsAlive, before + 10);
}

TEST_F(DisclosureViewTest, AWindowThatClosesDuringAnAnimationIsHarmless) {
  section->toggleDisclosure(nullptr);
  desktop.advance(0.1);
  window->close();
  finish();
  EXPECT_FALSE(section->isDisclosed());
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureViewTest, AWindowThatIsResizedDuringAnAnimationDoesNotDisturbIt) {
  section->toggleDisclosure(nullptr);
  desktop.advance(0.1);
  const CGFloat height = heightOf(section);
  window->setFrame({100, 100, 300, 400}, true);
  EXPECT_EQ(heightOf(section), height);
  finish();
  EXPECT_EQ(heightOf(section), 24);
  EXPECT_FALSE(section->isChanging());
}

// Margins that are required, around a label of 16 points: there is no room for them in a section that is folded.
struct DisclosureViewMarginsTest : harness::StillWorld {
  struct Label : NSView {
    using NSView::NSView;
    CGSize intrinsicContentSize() const override { return {60, 16}; }
  };

  ~DisclosureViewMarginsTest() override {
    NSLayoutConstraint::setConflictHandler(nullptr);
    if (header) header->setParentDisclosure(nullptr);
  }

  template <class View>
  Ref<View> addTo(NSView& superview) {
    const auto view = make<View>(CGRect{});
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    superview.addSubview(view);
    return view;
  }
  void equal(const Ref<NSView>& first, NSLayoutAttribute attribute, const Ref<NSView>& second,
             NSLayoutAttribute secondAttribute, CGFloat constant = 0) {
    NSLayoutConstraint::constraintWithItem(first, attribute, NSLayoutRelationEqual, second, secondAttribute, 1, constant)
        ->setActive(true);
  }
  void equal(const Ref<NSView>& first, NSLayoutAttribute attribute, const Ref<NSView>& second, CGFloat constant = 0) {
    equal(first, attribute, second, attribute, constant);
  }
  void fill(bool hasHeader) {
    for (const NSLayoutAttribute edge : {NSLayoutAttributeLeft, NSLayoutAttributeRight, NSLayoutAttributeTop})
      equal(section, edge, window->contentView());
    for (const NSLayoutAttribute edge : {NSLayoutAttributeLeft, NSLayoutAttributeRight, NSLayoutAttributeBottom})
      equal(content, edge, section);
    if (hasHeader) {
      header = addTo<DisclosureHeaderView>(*section);
      for (const NSLayoutAttribute edge : {NSLayoutAttributeLeft, NSLayoutAttributeRight, NSLayoutAttributeTop})
        equal(header, edge, section);
      equal(header, NSLayoutAttributeHeight, nullptr, NSLayoutAttributeNotAnAttribute, 20);
      equal(content, NSLayoutAttributeTop, header, NSLayoutAttributeBottom);
      section->setHeaderView(header);
      header->setParentDisclosure(section);
    } else {
      equal(content, NSLayoutAttributeTop, section);
    }
    equal(label, NSLayoutAttributeLeft, content, 8);
    equal(label, NSLayoutAttributeTop, content, 8);
    equal(label, NSLayoutAttributeBottom, content, -8);
    section->setContentView(content);
    section->awakeFromNib();
    window->layoutIfNeeded();
  }
  struct Heights {
    CGFloat section, content, label;
    bool operator==(const Heights&) const = default;
    friend void PrintTo(const Heights& it, std::ostream* out) { *out << it.section << " " << it.content << " " << it.label; }
  };
  Heights heights() {
    window->layoutIfNeeded();
    return {section->frame().size.height, content->frame().size.height, label->frame().size.height};
  }
  CGFloat limit() const { return section->constraints().back()->constant(); }
  // Each step of an animation, which ends at the height.
  void expectThatFoldingFollowsItsLimit(CGFloat height) {
    section->toggleDisclosure(nullptr);
    for (int frame = 0; frame < 25; ++frame) {
      desktop.advance(defaultAnimationDuration / 25);
      EXPECT_NEAR(heights().section, limit(), 0.5);
    }
    desktop.advance(1);
    EXPECT_EQ(heights().section, height);
  }

  Ref<NSWindow> window = showWindow({100, 100, 200, 600});
  Ref<DisclosureView> section = addTo<DisclosureView>(*window->contentView());
  Ref<NSView> content = addTo<NSView>(*section);
  Ref<Label> label = addTo<Label>(*content);
  Ref<DisclosureHeaderView> header;
  std::vector<std::string> conflicts;
};

TEST_F(DisclosureViewMarginsTest, AreCutWithTheContentAndNobodyIsWarned) {
  NSLayoutConstraint::setConflictHandler([this](const std::string& line) { conflicts.push_back(line); });
  fill(/*hasHeader=*/true);
  EXPECT_EQ(heights(), (Heights{52, 32, 16}));
  section->setDisclosureTo(false, false);
  EXPECT_EQ(heights(), (Heights{20, 0, 0}));
  EXPECT_EQ(header->frame().size.height, 20);
  section->setDisclosureTo(true, false);
  EXPECT_EQ(heights(), (Heights{52, 32, 16}));
  EXPECT_THAT(conflicts, testing::IsEmpty());
}

TEST_F(DisclosureViewMarginsTest, AreCutWithoutAHeaderToo) {
  fill(/*hasHeader=*/false);
  EXPECT_EQ(heights(), (Heights{32, 32, 16}));
  section->setDisclosureTo(false, false);
  EXPECT_EQ(heights(), (Heights{0, 0, 0}));
  section->setDisclosureTo(true, false);
  EXPECT_EQ(heights(), (Heights{32, 32, 16}));
}

TEST_F(DisclosureViewMarginsTest, AreCutOnTheWayThereAndBack) {
  fill(/*hasHeader=*/true);
  expectThatFoldingFollowsItsLimit(20);
  section->toggleDisclosure(nullptr);
  for (int frame = 0; frame < 24; ++frame) {
    desktop.advance(defaultAnimationDuration / 25);
    EXPECT_NEAR(heights().section, limit(), 0.5);
  }
  desktop.advance(1);
  EXPECT_EQ(heights(), (Heights{52, 32, 16}));
}

TEST_F(DisclosureViewMarginsTest, AreCutOnTheWayWithoutAHeader) {
  fill(/*hasHeader=*/false);
  expectThatFoldingFollowsItsLimit(0);
}

// The button.

TEST_F(DisclosureViewTest, TheTitleSaysWhatTheButtonWillDoNext) {
  section->setDisclosureTo(false, false);
  EXPECT_EQ(button()->title(), "Show");
  section->setDisclosureTo(true, false);
  EXPECT_EQ(button()->title(), "Hide");
  section->toggleDisclosure(nullptr);
  EXPECT_EQ(button()->title(), "Hide");  // as long as it changes
  finish();
  EXPECT_EQ(button()->title(), "Show");
  section->toggleDisclosure(nullptr);
  finish();
  EXPECT_EQ(button()->title(), "Hide");
}

// Lets a test act as the button is brought up to date.
struct Witness : NSButton {
  using NSButton::NSButton;
  void setHidden(bool isHidden) override {
    NSButton::setHidden(isHidden);
    if (call) call();
  }
  std::function<void()> call;
};

TEST_F(DisclosureViewTest, TheButtonIsBroughtUpToDateAfterMeasuringAndBeforeTheState) {
  const auto witness = make<Witness>(CGRect{});
  std::vector<std::string> seen;
  witness->call = [&] {
    seen.push_back(witness->title() + (section->isDisclosed() ? " open" : " closed") +
                   (section->isChanging() ? " changing, " : ", ") + std::to_string(std::lround(section->disclosedHeight())) +
                   " up to " + std::to_string(std::lround(limit())));
  };
  section->headerView()->setDisclosureButton(witness);
  section->toggleDisclosure(nullptr);
  finish();
  section->toggleDisclosure(nullptr);
  finish();
  section->setDisclosureTo(false, false);
  growContent(200);
  section->setDisclosureTo(true, false);
  EXPECT_THAT(seen, ElementsAre("Show open changing, 124 up to 24", "Hide closed changing, 124 up to 32760",
                                "Show open, 124 up to 24", "Hide closed, 224 up to 32760"));
  witness->call = nullptr;
}

TEST_F(DisclosureViewTest, AnAnimationsEndIsTheLastThingThatChanges) {
  section->headerView()->setIsOperable(true);
  std::vector<std::string> seen;
  const auto token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityValueChangedNotification, section->headerView(), nullptr, [&](const Ref<NSNotification>&) {
        seen.push_back(std::string(section->isDisclosed() ? "open" : "closed") + (section->isChanging() ? " changing" : ""));
      });
  section->toggleDisclosure(nullptr);
  finish();
  section->toggleDisclosure(nullptr);
  finish();
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_THAT(seen, ElementsAre("closed changing", "open changing"));
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureViewTest, OneThatTheHostReleasesAsItsButtonChangesHarmsNobody) {
  const WeakRef<DisclosureView> weak = section;
  const auto witness = make<Witness>(CGRect{});
  section->headerView()->setDisclosureButton(witness);
  witness->call = [&] {
    section->headerView()->setParentDisclosure(nullptr);
    section->removeFromSuperview();
    section.reset();
  };
  section->setDisclosureTo(false, false);
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(witness->title(), "Show");
}

TEST_F(DisclosureViewTest, TheTitleIsInTheUsersLanguage) {
  NSBundle::mainBundle()->setStringTable({{"Hide", "Masquer"}, {"Show", "Afficher"}});
  section->setDisclosureTo(false, false);
  EXPECT_EQ(button()->title(), "Afficher");
  section->setDisclosureTo(true, false);
  EXPECT_EQ(button()->title(), "Masquer");
}

TEST_F(DisclosureViewTest, AClickOnTheButtonToggles) {
  button()->performClick(nullptr);
  EXPECT_TRUE(section->isChanging());
  finish();
  EXPECT_FALSE(section->isDisclosed());
}

// The header of the section is 24 points high, at the top of a window of 600.
struct AtTheScreensOrigin : harness::SectionsWorld {
  AtTheScreensOrigin() : SectionsWorld({0, 0}) {}
};

TEST_F(AtTheScreensOrigin, AChangeShowsTheButtonUnderTheMouse) {
  user.moveTo(*window, {100, 590});
  section->setDisclosureTo(false, false);
  EXPECT_FALSE(button()->isHidden());
  user.moveTo(*window, {100, 300});
  section->setDisclosureTo(true, false);
  EXPECT_TRUE(button()->isHidden());
}

TEST_F(AtTheScreensOrigin, WakingHidesTheButtonUnderTheMouse) {
  user.moveTo(*window, {100, 590});
  button()->setHidden(false);
  section->removeConstraint(collapse(*section));
  section->awakeFromNib();
  EXPECT_TRUE(button()->isHidden());
}

// Intentional: the mouse's place on the screen is taken for one in the window.
TEST_F(DisclosureViewTest, ElsewhereOnTheScreenTheButtonIsNotFoundUnderTheMouse) {
  user.moveTo(*window, {50, 590});
  button()->setHidden(false);
  section->setDisclosureTo(false, false);
  EXPECT_TRUE(button()->isHidden());  // (150, 690) lies outside
  user.moveTo(*window, {50, 490});    // (150, 590) lies in the header as it is taken
  section->setDisclosureTo(true, false);
  EXPECT_FALSE(button()->isHidden());
}

// An addition.

TEST_F(DisclosureViewTest, WhatTheFoldedSectionCutsOffLeavesTheTabChainIfItSaysSo) {
  const auto field = make<NSTextField>(CGRect{10, 10, 100, 22});
  section->contentView()->addSubview(field);
  const auto isShown = [&] {
    const AccessibilityElements children = section->accessibilityChildren().value();
    return std::find(children.begin(), children.end(), Ref<NSObject>(field->cell())) != children.end();
  };
  section->setDisclosureTo(false, false);
  EXPECT_TRUE(field->canBecomeKeyView());
  EXPECT_TRUE(isShown());
  section->setLeavesOutFoldedViews(true);
  EXPECT_FALSE(field->canBecomeKeyView());
  EXPECT_FALSE(isShown());
  EXPECT_FALSE(field->isHidden());
  section->setDisclosureTo(true, false);
  EXPECT_TRUE(field->canBecomeKeyView());
  EXPECT_TRUE(isShown());
}

// Odd orders.

TEST_F(DisclosureViewTest, AHeaderThatIsReplacedMeanwhileCountsFromThenOn) {
  const Ref<DisclosureHeaderView> earlier = section->headerView();
  section->toggleDisclosure(nullptr);
  desktop.advance(0.1);
  const auto other = make<DisclosureHeaderView>(CGRect{0, 0, 10, 10});
  const auto otherButton = make<NSButton>(CGRect{});
  other->setDisclosureButton(otherButton);
  section->setHeaderView(other);
  finish();
  EXPECT_EQ(otherButton->title(), "Show");
  EXPECT_EQ(earlier->disclosureButton()->title(), "?");
  EXPECT_EQ(heightOf(section), 24);  // where the animation was going
  section->setDisclosureTo(true, false);
  section->setDisclosureTo(false, false);
  EXPECT_EQ(limit(), 10);
  earlier->setParentDisclosure(nullptr);
}

TEST_F(DisclosureViewTest, WhatIsSetMeanwhileGivesWayAtTheEnd) {
  section->toggleDisclosure(nullptr);
  desktop.advance(0.1);
  section->setIsChanging(false);
  section->setIsDisclosed(false);
  EXPECT_FALSE(section->isDisclosed());
  section->setDisclosureTo(true, false);
  EXPECT_TRUE(section->isDisclosed());
  finish();
  EXPECT_FALSE(section->isDisclosed());
  EXPECT_EQ(button()->title(), "Show");
}

TEST_F(DisclosureViewTest, AnOpeningThatIsTakenOutOfItsWindowEnds) {
  section->setDisclosureTo(false, false);
  section->toggleDisclosure(nullptr);
  desktop.advance(0.1);
  bar->removeFromSuperview();
  finish();
  EXPECT_TRUE(section->isDisclosed());
  EXPECT_FALSE(section->isChanging());
  EXPECT_EQ(limit(), openLimit);
  outer->addSubview(bar);
  EXPECT_EQ(heightOf(section), 124);
}

TEST_F(DisclosureViewTest, AChangeEndsWithALayoutThatThrows) {
  struct Throwing : NSView {
    using NSView::NSView;
    void layout() override {
      if (std::exchange(throws, false)) throw std::runtime_error("refused");
    }
    bool throws = false;
  };
  const auto throwing = make<Throwing>(CGRect{0, 0, 10, 10});
  section->contentView()->addSubview(throwing);
  section->setDisclosureTo(false, false);
  desktop.settle();
  const auto throwNext = [&] {
    throwing->throws = true;
    throwing->setNeedsLayout(true);
  };
  for (const bool animates : {false, true}) {
    throwNext();
    EXPECT_THROW(section->setDisclosureTo(true, animates), std::runtime_error);
    EXPECT_FALSE(section->isDisclosed());
    EXPECT_FALSE(section->isChanging());
    EXPECT_EQ(heightOf(section), 24);
  }
  for (const bool opens : {true, false}) {
    section->setDisclosureTo(opens, true);
    throwNext();
    EXPECT_THROW(finish(), std::runtime_error);
    finish();
    EXPECT_FALSE(section->isChanging());
    section->setDisclosureTo(opens, true);
    finish();
    EXPECT_EQ(section->isDisclosed(), opens);
  }
}

TEST_F(DisclosureViewTest, BothMayMoveAtOnce) {
  section->toggleDisclosure(nullptr);
  desktop.advance(0.1);
  below->toggleDisclosure(nullptr);
  for (int i = 0; i < 30; ++i) {
    desktop.advance(0.01);
    EXPECT_EQ(topOf(below), heightOf(section));
  }
  finish();
  EXPECT_EQ(heightOf(section), 24);
  EXPECT_EQ(heightOf(below), 24);
}

}  // namespace
}  // namespace TessalunaUIKit
