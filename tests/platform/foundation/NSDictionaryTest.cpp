#include "tessaluna/platform/foundation/NSDictionary.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/NSString.h"

using namespace tessaluna::platform;
using testing::ElementsAre;

namespace {

Ref<NSNumber> number(int value) { return make<NSNumber>(value); }

}  // namespace

TEST(NSDictionary, FindsObjectsByTheirKeysAndAsTheirClass) {
  const auto dictionary = make<NSDictionary>(NSDictionary::Entries{{"one", number(1)}, {"name", make<NSString>("x")}});
  EXPECT_EQ(dictionary->count(), 2u);
  EXPECT_EQ(dictionary->objectForKey<NSNumber>("one")->integerValue(), 1);
  EXPECT_EQ(dictionary->objectForKey<NSNumber>("name"), nullptr);
  EXPECT_EQ(dictionary->objectForKey("two"), nullptr);
  EXPECT_THAT(dictionary->allKeys(), ElementsAre("name", "one"));
}

TEST(NSDictionary, AMutableCopyHasTheSameObjectsAndChangesAlone) {
  const auto dictionary = make<NSDictionary>(NSDictionary::Entries{{"one", number(1)}});
  const auto copy = dictionary->mutableCopy();
  EXPECT_EQ(copy->objectForKey("one"), dictionary->objectForKey("one"));
  copy->setObjectForKey(number(2), "one");
  copy->setObjectForKey(number(3), "three");
  copy->removeObjectForKey("unknown");
  EXPECT_EQ(copy->objectForKey<NSNumber>("one")->integerValue(), 2);
  EXPECT_EQ(copy->count(), 2u);
  EXPECT_EQ(dictionary->objectForKey<NSNumber>("one")->integerValue(), 1);
  copy->removeObjectForKey("one");
  EXPECT_THAT(copy->allKeys(), ElementsAre("three"));
  copy->removeAllObjects();
  EXPECT_EQ(copy->count(), 0u);
}

TEST(NSDictionary, IsEqualToOneWithEqualObjectsUnderTheSameKeys) {
  const auto dictionary = make<NSDictionary>(NSDictionary::Entries{{"one", number(1)}});
  const auto other = make<NSMutableDictionary>();
  EXPECT_FALSE(dictionary->isEqual(other.get()));
  other->setObjectForKey(number(1), "one");
  EXPECT_TRUE(dictionary->isEqual(other.get()));
  EXPECT_TRUE(other->isEqual(dictionary.get()));
  other->setObjectForKey(number(1), "two");
  EXPECT_FALSE(dictionary->isEqual(other.get()));
  EXPECT_FALSE(dictionary->isEqual(number(1).get()));
}

TEST(NSDictionaryDeathTest, AnAbsentObjectStopsTheProgram) {
  EXPECT_DEATH(make<NSMutableDictionary>()->setObjectForKey(nullptr, "a"), "no object for the key \"a\"");
  EXPECT_DEATH(make<NSDictionary>(NSDictionary::Entries{{"b", nullptr}}), "no object for the key \"b\"");
}
