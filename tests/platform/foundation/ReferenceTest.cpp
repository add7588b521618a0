#include "tessaluna/platform/foundation/Reference.h"

#include <gtest/gtest.h>

#include <functional>

#include "tessaluna/platform/foundation/NSObject.h"

using namespace tessaluna::platform;

namespace {

struct Counted : NSObject {
  explicit Counted(int& living) : living(living) { ++living; }
  ~Counted() override { --living; }
  int answer() const { return 42; }
  int& living;
};

}  // namespace

TEST(Ref, KeepsItsObjectAlive) {
  int living = 0;
  Ref<Counted> first = make<Counted>(living);
  const Ref<Counted> second = first;
  first.reset();
  EXPECT_EQ(living, 1);
}

TEST(WeakRef, IsAbsentOnceItsObjectHasGone) {
  int living = 0;
  Ref<Counted> object = make<Counted>(living);
  const WeakRef<Counted> weak = object;
  EXPECT_EQ(weak.lock(), object);
  object.reset();
  EXPECT_EQ(living, 0);
  EXPECT_EQ(weak.lock(), nullptr);
}

TEST(Unowned, ReachesItsObjectWithoutKeepingItAlive) {
  int living = 0;
  Ref<Counted> object = make<Counted>(living);
  const Unowned<Counted> unowned(object);
  EXPECT_EQ(unowned->answer(), 42);
  object.reset();
  EXPECT_EQ(living, 0);
}

TEST(UnownedDeathTest, UseAfterItsObjectHasGoneStopsTheProgram) {
  int living = 0;
  Ref<Counted> object = make<Counted>(living);
  const Unowned<Counted> unowned(object);
  object.reset();
  EXPECT_DEATH(unowned->answer(), "unowned reference was used after its object had gone");
}

TEST(Required, StartsAbsentAndCanBeTestedAndPassedOn) {
  Required<std::function<int()>> member("MyView.handler");
  EXPECT_FALSE(member);
  EXPECT_EQ(member.optional().has_value(), false);
}

TEST(Required, HoldsWhatItIsGivenAndCanBeEmptied) {
  Required<std::string> member("MyView.text");
  member = std::string("hello");
  EXPECT_TRUE(member);
  EXPECT_EQ(*member, "hello");
  EXPECT_EQ(member->size(), 5u);
  member.reset();
  EXPECT_FALSE(member);
}

TEST(Required, AZeroValueIsNotAbsent) {
  Required<double> member("MyView.width");
  member = 0.0;
  EXPECT_TRUE(member);
  EXPECT_EQ(*member, 0.0);
}

TEST(RequiredDeathTest, UseWhileAbsentStopsTheProgramWithTheMembersName) {
  const Required<double> member("MyView.width");
  EXPECT_DEATH((void)*member, "used while absent: MyView.width");
}

TEST(RequiredDeathTest, AReferenceUsedWhileAbsentStopsTheProgramWithTheMembersName) {
  const Required<Ref<Counted>> member("MyView.image");
  EXPECT_DEATH(member->answer(), "used while absent: MyView.image");
}

TEST(Required, AnEmptyReferenceIsAbsent) {
  int living = 0;
  Required<Ref<Counted>> member("MyView.image");
  EXPECT_FALSE(member);
  member = make<Counted>(living);
  EXPECT_TRUE(member);
  EXPECT_EQ(member->answer(), 42);
  member = nullptr;
  EXPECT_FALSE(member);
  EXPECT_EQ(member.optional(), nullptr);
}

TEST(Uncopied, ACopyOfTheOwnerStartsWithoutTheValue) {
  struct Owner {
    int copied = 1;
    Uncopied<int> own;
  };
  Owner owner;
  owner.copied = 2;
  owner.own.value = 3;
  const Owner copy = owner;
  EXPECT_EQ(copy.copied, 2);
  EXPECT_EQ(copy.own.value, 0);
  EXPECT_EQ(owner.own.value, 3);
}
