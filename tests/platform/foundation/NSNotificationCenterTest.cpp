#include "tessaluna/platform/foundation/NSNotificationCenter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessaluna::platform {
namespace {

struct NSNotificationCenterTest : testing::Test {
  Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
  Ref<NSObject> one = make<NSObject>(), other = make<NSObject>();
  std::vector<std::string> heard;

  Ref<NSObject> hear(std::string_view name, const Ref<NSObject>& object, std::string as) {
    return center->addObserverForName(name, object, nullptr, [this, as](const Ref<NSNotification>& notification) {
      heard.push_back(as + ":" + notification->name());
    });
  }
};

TEST_F(NSNotificationCenterTest, NotifiesThoseWhoAskedForTheNameAndTheObject) {
  hear("moved", one, "one's");
  hear("moved", nullptr, "anybody's");
  hear("", one, "all of one");
  hear("gone", one, "gone");
  center->postNotificationName("moved", one);
  center->postNotificationName("moved", other);
  EXPECT_EQ(heard, (std::vector<std::string>{"one's:moved", "anybody's:moved", "all of one:moved", "anybody's:moved"}));
}

TEST_F(NSNotificationCenterTest, GivesTheObjectToTheBlock) {
  Ref<NSObject> told;
  center->addObserverForName("moved", nullptr, nullptr,
                             [&](const Ref<NSNotification>& notification) { told = notification->object(); });
  center->postNotificationName("moved", other);
  EXPECT_EQ(told, other);
}

TEST_F(NSNotificationCenterTest, AnObserverThatWasRemovedMeanwhileIsNotCalled) {
  Ref<NSObject> second;
  center->addObserverForName("moved", nullptr, nullptr, [&](const Ref<NSNotification>&) { center->removeObserver(second); });
  second = hear("moved", nullptr, "second");
  hear("moved", nullptr, "third");
  center->postNotificationName("moved", one);
  EXPECT_EQ(heard, (std::vector<std::string>{"third:moved"}));
}

TEST_F(NSNotificationCenterTest, AnObserverMayRemoveItselfAndAddOthers) {
  Ref<NSObject> token;
  token = center->addObserverForName("moved", nullptr, nullptr, [&](const Ref<NSNotification>&) {
    heard.push_back("self");
    center->removeObserver(token);
    hear("moved", nullptr, "later");
  });
  center->postNotificationName("moved", one);
  EXPECT_EQ(heard, (std::vector<std::string>{"self"}));
  center->postNotificationName("moved", one);
  EXPECT_EQ(heard, (std::vector<std::string>{"self", "later:moved"}));
}

TEST_F(NSNotificationCenterTest, RemovingWhatIsNotThereDoesNothing) {
  const Ref<NSObject> token = hear("moved", nullptr, "one");
  center->removeObserver(nullptr);
  center->removeObserver(other);
  center->postNotificationName("moved", one);
  center->removeObserver(token);
  center->removeObserver(token);
  center->postNotificationName("moved", one);
  EXPECT_EQ(heard.size(), 1u);
}

TEST_F(NSNotificationCenterTest, DoesNotKeepTheObjectAliveAndForgetsItWhenItGoes) {
  hear("moved", one, "one's");
  const WeakRef<NSObject> weak = one;
  one = nullptr;
  EXPECT_TRUE(weak.expired());
  center->postNotificationName("moved", nullptr);
  center->postNotificationName("moved", other);
  EXPECT_TRUE(heard.empty());
}

TEST_F(NSNotificationCenterTest, RemovingAnObserverFreesItsBlockWhileTheTokenIsKept) {
  const auto captured = std::make_shared<int>(1);
  const Ref<NSObject> token = center->addObserverForName("moved", nullptr, nullptr, [captured](const auto&) {});
  center->removeObserver(token);
  EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(NSNotificationCenterTest, ABlockThatRemovesItsObserverKeepsWhatItHasCapturedUntilItReturns) {
  const auto captured = std::make_shared<int>(1);
  Ref<NSObject> token;
  long usesAfterRemoval = 0;
  token = center->addObserverForName("moved", nullptr, nullptr, [&, captured](const Ref<NSNotification>&) {
    center->removeObserver(token);
    usesAfterRemoval = captured.use_count();
  });
  center->postNotificationName("moved", one);
  EXPECT_EQ(usesAfterRemoval, 2);
  EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(NSNotificationCenterTest, TheDefaultOneIsOne) {
  EXPECT_EQ(&NSNotificationCenter::defaultCenter(), &NSNotificationCenter::defaultCenter());
}

}  // namespace
}  // namespace tessaluna::platform
