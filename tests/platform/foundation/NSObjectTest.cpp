#include "tessaluna/platform/foundation/NSObject.h"

#include "tessaluna/platform/foundation/NSCoder.h"

#include <gtest/gtest.h>

#include <vector>

using namespace tessaluna::platform;

namespace {

class Animal : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit Animal(std::vector<std::string>& log) : log(log) { log.push_back("built"); }
  Animal(NSCoder& coder, std::vector<std::string>& log) : NSObject(coder), log(log) {
    log.push_back("built");
    if (!coder.containsValueForKey("name")) coder.fail("an animal needs a name");
  }
  void didInit() override { log.push_back(shared_from_this() ? "didInit with a reference to itself" : ""); }
  void feed(NSObject* sender) { log.push_back(sender ? "fed by " + sender->className() : "fed"); }
  virtual void speak(NSObject*) { log.push_back("..."); }

  std::vector<std::string>& log;
};

class Dog : public Animal {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  using Animal::Animal;
  void speak(NSObject*) override { log.push_back("woof"); }
};

constexpr Selector animalSelectors[] = {action<&Animal::feed>("feed:"), action<&Animal::speak>("speak:")};
const ClassInfo Animal::staticClassInfo{
    .name = "Tests.Animal", .base = &NSObject::staticClassInfo, .selectors = animalSelectors};
const ClassInfo Dog::staticClassInfo{.name = "Tests.Dog", .base = &Animal::staticClassInfo};

using Log = std::vector<std::string>;

}  // namespace

TEST(NSObject, MakeBuildsAndThenCallsDidInit) {
  Log log;
  make<Animal>(log);
  EXPECT_EQ(log, (Log{"built", "didInit with a reference to itself"}));
}

TEST(NSObject, ACoderThatFailedMakesNoObjectAndNoDidInit) {
  Log log;
  NSCoder coder(R"({"legs": 4})");
  EXPECT_EQ(make<Animal>(coder, log), nullptr);
  EXPECT_EQ(log, Log{"built"});
}

TEST(NSObject, ACoderThatHadFailedBeforeMakesNoObject) {
  Log log;
  NSCoder coder("{");
  EXPECT_EQ(make<Animal>(coder, log), nullptr);
}

TEST(NSObject, ACoderThatHoldsWhatIsNeededMakesAnObject) {
  Log log;
  NSCoder coder(R"({"name": "Rex"})");
  EXPECT_NE(make<Animal>(coder, log), nullptr);
  EXPECT_EQ(log.back(), "didInit with a reference to itself");
}

TEST(NSObject, ClassNameIsThatOfTheDerivedClass) {
  Log log;
  const Ref<Animal> dog = make<Dog>(log);
  EXPECT_EQ(dog->className(), "Tests.Dog");
  EXPECT_EQ(make<NSObject>()->className(), "NSObject");
}

TEST(NSObject, IsEqualIsIdentity) {
  const auto a = make<NSObject>(), b = make<NSObject>();
  EXPECT_TRUE(a->isEqual(a.get()));
  EXPECT_FALSE(a->isEqual(b.get()));
  EXPECT_FALSE(a->isEqual(nullptr));
}

TEST(NSObject, TwoAbsentObjectsAreEqual) {
  const auto a = make<NSObject>();
  EXPECT_TRUE(areEqual(nullptr, nullptr));
  EXPECT_FALSE(areEqual(a.get(), nullptr));
  EXPECT_FALSE(areEqual(nullptr, a.get()));
}

TEST(NSObject, ASelectorIsPerformedWithItsSender) {
  Log log;
  const auto animal = make<Animal>(log);
  const auto sender = make<NSObject>();
  EXPECT_TRUE(animal->performSelector("feed:", sender.get()));
  EXPECT_EQ(log.back(), "fed by NSObject");
  EXPECT_TRUE(animal->performSelector("feed:", nullptr));
  EXPECT_EQ(log.back(), "fed");
}

TEST(NSObject, ASelectorOfTheBaseIsFoundAndCallsTheOverride) {
  Log log;
  const auto dog = make<Dog>(log);
  EXPECT_TRUE(dog->respondsToSelector("speak:"));
  EXPECT_TRUE(dog->performSelector("speak:", nullptr));
  EXPECT_EQ(log.back(), "woof");
}

TEST(NSObject, AnUnknownSelectorDoesNothing) {
  Log log;
  const auto animal = make<Animal>(log);
  log.clear();
  EXPECT_FALSE(animal->respondsToSelector("feed"));
  EXPECT_FALSE(animal->performSelector("feed", nullptr));
  EXPECT_TRUE(log.empty());
}
