// Groups, and what moves by them, on the virtual clock.
#include "tessaluna/platform/time/NSAnimationContext.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

#include "tessaluna/platform/time/CAMediaTimingFunction.h"
#include "tessaluna/platform/time/PropertyAnimation.h"
#include "tests/harness/StillWorld.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Has a number that can be animated, and writes down what it is set to.
class Dial : public NSObject {
 public:
  void setAngle(CGFloat angle) {
    angles.push_back(angle);
    if (then) then();
  }
  void setWidth(CGFloat width) { widths.push_back(width); }
  void turnTo(CGFloat angle, CGFloat from = 0) {
    animateProperty<&Dial::setAngle>(*this, from, angle, [](Dial&) -> NSWindow* { return nullptr; });
  }
  void widenTo(CGFloat width) {
    animateProperty<&Dial::setWidth>(*this, 0.0, width, [](Dial&) -> NSWindow* { return nullptr; });
  }
  CGFloat angle() const { return angles.empty() ? 0 : angles.back(); }
  std::vector<CGFloat> angles, widths;
  std::function<void()> then;
};

using Context = NSAnimationContext;

class NSAnimationContextTest : public harness::StillWorld {
 protected:
  std::function<void()> note(const std::string& what) {
    return [this, what] { log.push_back(what); };
  }
  static void linear(Context& context) {
    context.setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear));
  }
  std::vector<std::string> log;
  Ref<Dial> dial = make<Dial>();
};

}  // namespace

TEST_F(NSAnimationContextTest, AGroupsChangesAreMadeAtOnceAndItsDurationIsAQuarterOfASecond) {
  bool wasCalled = false;
  Context::runAnimationGroup([&](Context& context) {
    wasCalled = true;
    EXPECT_EQ(context.duration(), 0.25);
    EXPECT_EQ(context.timingFunction(), nullptr);
    EXPECT_EQ(Context::currentContext().get(), &context);
  });
  EXPECT_TRUE(wasCalled);
}

TEST_F(NSAnimationContextTest, AnAnimationEndsExactlyAtItsValueAfterTheDuration) {
  Context::runAnimationGroup([&](Context&) { dial->turnTo(0.7); }, note("done"));
  EXPECT_THAT(dial->angles, IsEmpty());
  desktop.advance(0.24);
  EXPECT_LT(dial->angle(), 0.7);
  EXPECT_THAT(log, IsEmpty());
  desktop.advance(0.01);
  EXPECT_EQ(dial->angle(), 0.7);
  EXPECT_THAT(log, ElementsAre("done"));
  const std::size_t steps = dial->angles.size();
  desktop.advance(1);
  EXPECT_EQ(dial->angles.size(), steps);
}

TEST_F(NSAnimationContextTest, WithoutATimingFunctionThePaceIsTheDefaultOne) {
  const auto pace = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionDefault);
  dial->turnTo(1);
  desktop.advance(0.101);
  EXPECT_NEAR(dial->angle(), pace->valueAt(framePeriodWithoutWindow * 6 / 0.25), 1e-6);
}

TEST_F(NSAnimationContextTest, TheGroupsTimingFunctionIsThePace) {
  Context::runAnimationGroup([&](Context& context) {
    context.setDuration(1);
    context.setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn));
    dial->turnTo(1);
  });
  desktop.advance(0.5);
  EXPECT_NEAR(dial->angle(), 0.3153, 0.02);
}

TEST_F(NSAnimationContextTest, AnAnimationTakesTheDurationThatHoldsWhenItStarts) {
  Context::runAnimationGroup([&](Context& context) {
    context.setDuration(0.1);
    dial->turnTo(1);
    context.setDuration(5);
  });
  desktop.advance(0.1);
  EXPECT_EQ(dial->angle(), 1);
}

TEST_F(NSAnimationContextTest, OutsideOfAGroupChangesOfTheContextLastForOneTurn) {
  Context::currentContext()->setDuration(0.5);
  EXPECT_EQ(Context::currentContext()->duration(), 0.5);
  dial->turnTo(1);
  desktop.advance(0.4);
  EXPECT_LT(dial->angle(), 1);
  desktop.advance(0.1);
  EXPECT_EQ(dial->angle(), 1);
  EXPECT_EQ(Context::currentContext()->duration(), 0.25);
}

TEST_F(NSAnimationContextTest, AGroupWithinAnotherStartsWithItsSettingsAndLeavesThemAlone) {
  Context::runAnimationGroup([&](Context& outer) {
    outer.setDuration(2);
    linear(outer);
    Context::runAnimationGroup([&](Context& inner) {
      EXPECT_EQ(inner.duration(), 2);
      EXPECT_EQ(inner.timingFunction(), outer.timingFunction());
      inner.setDuration(1);
    });
    EXPECT_EQ(outer.duration(), 2);
    EXPECT_EQ(Context::currentContext().get(), &outer);
  });
}

TEST_F(NSAnimationContextTest, AGroupIsThroughAfterThoseWithinIt) {
  Context::runAnimationGroup(
      [&](Context& outer) {
        outer.setDuration(0.1);
        dial->turnTo(1);
        Context::runAnimationGroup(
            [&](Context& inner) {
              inner.setDuration(0.3);
              dial->widenTo(1);
            },
            note("inner"));
      },
      note("outer"));
  desktop.advance(0.29);
  EXPECT_THAT(log, IsEmpty());
  desktop.advance(0.01);
  EXPECT_THAT(log, ElementsAre("inner", "outer"));
}

TEST_F(NSAnimationContextTest, GroupsCanBeMadeInSteps) {
  Context::beginGrouping();
  Context::currentContext()->setDuration(0.1);
  Context::currentContext()->setCompletionHandler(note("done"));
  dial->turnTo(1);
  Context::endGrouping();
  desktop.advance(0.1);
  EXPECT_EQ(dial->angle(), 1);
  EXPECT_THAT(log, ElementsAre("done"));
}

TEST_F(NSAnimationContextTest, TheCompletionOfAGroupWithoutAnimationsComesOnALaterTurn) {
  Context::runAnimationGroup([](Context&) {}, note("done"));
  EXPECT_THAT(log, IsEmpty());
  desktop.settle();
  EXPECT_THAT(log, ElementsAre("done"));
}

TEST_F(NSAnimationContextTest, WithLessMotionChangesAreMadeAtOnceAndTheCompletionStillComesLater) {
  desktop.setPrefersReducedMotion(true);
  Context::runAnimationGroup([&](Context&) { dial->turnTo(1); }, note("done"));
  EXPECT_THAT(dial->angles, ElementsAre(1));
  EXPECT_THAT(log, IsEmpty());
  desktop.settle();
  EXPECT_THAT(log, ElementsAre("done"));
}

TEST_F(NSAnimationContextTest, ADurationOfNothingMakesTheChangeAtOnce) {
  for (const double duration : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    dial->angles.clear();
    Context::runAnimationGroup([&](Context& context) {
      context.setDuration(duration);
      dial->turnTo(1);
    });
    EXPECT_THAT(dial->angles, ElementsAre(1));
  }
}

TEST_F(NSAnimationContextTest, ASecondAnimationTakesThePlaceOfTheFirstWhoseGroupIsThenThrough) {
  Context::runAnimationGroup([&](Context&) { dial->turnTo(1); }, note("first"));
  desktop.advance(0.1);
  Context::runAnimationGroup([&](Context&) { dial->turnTo(-1, dial->angle()); }, note("second"));
  desktop.settle();
  EXPECT_THAT(log, ElementsAre("first"));
  desktop.advance(0.2);
  EXPECT_GT(dial->angle(), -1);
  desktop.advance(0.05);
  EXPECT_EQ(dial->angle(), -1);
  EXPECT_THAT(log, ElementsAre("first", "second"));
}

TEST_F(NSAnimationContextTest, AnotherPropertyOfTheObjectAndAnotherObjectMoveOnTheirOwn) {
  const auto other = make<Dial>();
  dial->turnTo(1);
  dial->widenTo(2);
  other->turnTo(3);
  desktop.advance(0.25);
  EXPECT_EQ(dial->angle(), 1);
  EXPECT_EQ(dial->widths.back(), 2);
  EXPECT_EQ(other->angle(), 3);
}

TEST_F(NSAnimationContextTest, AnObjectIsNotKeptAliveAndItsGroupIsThroughAtTheEnd) {
  const WeakRef<Dial> weak = dial;
  Context::runAnimationGroup([&](Context&) { dial->turnTo(1); }, note("done"));
  desktop.advance(0.1);
  dial = nullptr;
  EXPECT_TRUE(weak.expired());
  desktop.advance(0.15);
  EXPECT_THAT(log, ElementsAre("done"));
}

TEST_F(NSAnimationContextTest, AStepMayReleaseTheObject) {
  dial->then = [this] { dial = nullptr; };
  const WeakRef<Dial> weak = dial;
  dial->turnTo(1);
  desktop.advance(1);
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSAnimationContextTest, AStepMayStartTheSameAnimationAgain) {
  int restarts = 0;
  dial->then = [&] {
    if (restarts++ == 0) dial->turnTo(5, 4);
  };
  dial->turnTo(1);
  desktop.advance(1);
  EXPECT_EQ(dial->angle(), 5);
  for (std::size_t i = 1; i < dial->angles.size(); ++i) EXPECT_GE(dial->angles[i], 4);
}

TEST_F(NSAnimationContextTest, ACompletionMayReleaseAnythingAndStartOver) {
  const WeakRef<Dial> weak = dial;
  const auto next = make<Dial>();
  Context::runAnimationGroup([&](Context&) { dial->turnTo(1); },
                             [&] {
                               dial = nullptr;
                               Context::runAnimationGroup([&](Context&) { next->turnTo(1); }, note("next"));
                             });
  desktop.advance(0.25);
  EXPECT_TRUE(weak.expired());
  desktop.advance(0.25);
  EXPECT_EQ(next->angle(), 1);
  EXPECT_THAT(log, ElementsAre("next"));
}

TEST(NSAnimationContextWithoutBackendTest, ChangesAndCompletionsAreMadeAtOnce) {
  const auto dial = make<Dial>();
  bool isDone = false;
  Context::runAnimationGroup([&](Context&) { dial->turnTo(1); }, [&] { isDone = true; });
  EXPECT_THAT(dial->angles, ElementsAre(1));
  EXPECT_TRUE(isDone);
}

TEST(NSAnimationContextDeathTest, TheEndOfAGroupThatHasNotBegunStopsTheProgram) {
  EXPECT_DEATH(Context::endGrouping(), "a group was ended that had not begun");
}

TEST_F(NSAnimationContextTest, ChangesThatThrowEndTheirGroup) {
  const auto changes = [](Context& context) {
    context.setDuration(9);
    throw std::runtime_error("refused");
  };
  EXPECT_THROW(Context::runAnimationGroup(changes, note("completed")), std::runtime_error);
  EXPECT_EQ(Context::currentContext()->duration(), defaultAnimationDuration);
  desktop.settle();
  EXPECT_THAT(log, ElementsAre("completed"));
}
