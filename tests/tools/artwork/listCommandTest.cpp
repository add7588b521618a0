#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tessaluna/uikit/stylekit/Routines.h"
#include "tests/tools/artwork/ToolRun.h"

namespace artwork {
namespace {

using nlohmann::json;
using testing::HasSubstr;

TEST(ListCommand, JsonHoldsAllRoutinesInOrder) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"list", "--json"});
  ASSERT_EQ(run.status, 0) << run.errors;
  const json all = json::parse(run.output);
  ASSERT_EQ(all.size(), TessalunaUIKit::routines().size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    const TessalunaUIKit::Routine& routine = TessalunaUIKit::routines()[i];
    EXPECT_EQ(all[i]["name"], routine.member());
    EXPECT_EQ(all[i]["selector"], routine.selector());
    EXPECT_EQ(all[i]["flags"].size(), routine.flags.size());
  }
}

TEST(ListCommand, JsonDescribesARoutineWithFlagsAndImage) {
  const ToolFolder folder;
  const json all = json::parse(folder.run({"list", "--json"}).output);
  const json expected = json::parse(R"({
    "name": "drawLeftArrow", "selector": "drawLeftArrowWithFrame:enabled:isPressed:", "family": "Arrows and crosses",
    "frameArgument": "frame", "defaultFrame": [1, 1, 12, 12],
    "flags": [{"name": "enabled", "default": true}, {"name": "isPressed", "default": false}],
    "image": "imageOfLeftArrow", "imageSelector": "imageOfLeftArrowWithImageSize:enabled:isPressed:"})");
  EXPECT_EQ(all[0], expected);
}

TEST(ListCommand, JsonDescribesARoutineWithoutFlagsAndImage) {
  const ToolFolder folder;
  for (const json& routine : json::parse(folder.run({"list", "--json"}).output)) {
    if (routine["name"] != "drawPlay") continue;
    EXPECT_EQ(routine["selector"], "drawPlayWithButtonFrame:");
    EXPECT_EQ(routine["frameArgument"], "buttonFrame");
    EXPECT_EQ(routine["flags"], json::array());
    EXPECT_TRUE(routine["image"].is_null());
    EXPECT_TRUE(routine["imageSelector"].is_null());
    return;
  }
  FAIL() << "there is no drawPlay";
}

TEST(ListCommand, TextNamesEveryRoutine) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"list"});
  ASSERT_EQ(run.status, 0) << run.errors;
  for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines())
    EXPECT_THAT(run.output, HasSubstr("  " + routine.selector() + "\n"));
  EXPECT_THAT(run.output, HasSubstr("    frame 1,1,12,12, enabled true, isPressed false\n"
                                    "    image: imageOfLeftArrowWithImageSize:enabled:isPressed:\n"));
  EXPECT_THAT(run.output, HasSubstr("    buttonFrame 0,0,32,32\n    image: none\n"));
}

TEST(ListCommand, TakesNoWord) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"list", "drawPlay"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.errors, "tessaluna-artwork: 'drawPlay' is one word too many\n");
}

}  // namespace
}  // namespace artwork
