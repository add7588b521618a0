#include "tessaluna/platform/foundation/NSBundle.h"

#include <gtest/gtest.h>

using namespace tessaluna::platform;

struct NSBundleTest : testing::Test {
  ~NSBundleTest() override {
    bundle.setStringTable({});
    bundle.setStringTable({}, "Menus");
  }
  NSBundle& bundle = *NSBundle::mainBundle();
};

TEST_F(NSBundleTest, TheMainBundleIsOne) { EXPECT_EQ(NSBundle::mainBundle(), NSBundle::mainBundle()); }

TEST_F(NSBundleTest, WithoutATranslationGivesTheValueOrElseTheKey) {
  EXPECT_EQ(bundle.localizedStringForKey("Hide"), "Hide");
  EXPECT_EQ(bundle.localizedStringForKey("Hide", "Conceal"), "Conceal");
  EXPECT_EQ(bundle.localizedStringForKey("Hide", "", "No such table"), "Hide");
  EXPECT_EQ(bundle.localizedStringForKey(""), "");
}

TEST_F(NSBundleTest, GivesTheTextOfTheTable) {
  bundle.setStringTable({{"Hide", "Masquer"}, {"Empty", ""}});
  bundle.setStringTable({{"Hide", "Cacher"}}, "Menus");
  EXPECT_EQ(bundle.localizedStringForKey("Hide", "Conceal"), "Masquer");
  EXPECT_EQ(bundle.localizedStringForKey("Hide", "", NSBundle::defaultTable), "Masquer");
  EXPECT_EQ(bundle.localizedStringForKey("Hide", "", "Menus"), "Cacher");
  EXPECT_EQ(bundle.localizedStringForKey("Empty", "value"), "");
  EXPECT_EQ(bundle.localizedStringForKey("hide"), "hide");
}

TEST_F(NSBundleTest, ALaterTableTakesTheEarlierOnesPlace) {
  bundle.setStringTable({{"Hide", "Masquer"}, {"Show", "Afficher"}});
  bundle.setStringTable({{"Show", "Montrer"}});
  EXPECT_EQ(bundle.localizedStringForKey("Hide"), "Hide");
  EXPECT_EQ(bundle.localizedStringForKey("Show"), "Montrer");
}

TEST_F(NSBundleTest, ATableComesFromADocument) {
  EXPECT_EQ(bundle.setStringTableFromJSON(R"({"Hide": "Masquer", "Show": "Afficher é"})"), std::nullopt);
  EXPECT_EQ(bundle.localizedStringForKey("Show"), "Afficher é");
}

TEST_F(NSBundleTest, ABadDocumentIsAnErrorAndLeavesTheEarlierTable) {
  bundle.setStringTable({{"Hide", "Masquer"}});
  EXPECT_EQ(bundle.setStringTableFromJSON("{\"Hide\":\n \"Ma"), "the archive is not JSON: line 2, column 5");
  EXPECT_EQ(bundle.setStringTableFromJSON("[]"), "the archive is not a JSON object");
  EXPECT_EQ(bundle.setStringTableFromJSON(R"({"Hide": 1})"), "\"Hide\" is not a text");
  EXPECT_EQ(bundle.localizedStringForKey("Hide"), "Masquer");
}
