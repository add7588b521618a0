#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <nlohmann/json.hpp>

#include "tessaluna/uikit/stylekit/Routines.h"
#include "tests/tools/artwork/ToolRun.h"

namespace artwork {
namespace {

using nlohmann::json;

const char leftArrow[] = R"([
{"op":"setStrokeColor","color":[0,0,0,1]},
{"op":"stroke","path":[["M",13,13],["L",3.0000400000000003,7],["L",13,1]],"lineWidth":2,"cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0}
]
)";

TEST(OpsCommand, PrintsOneObjectALine) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"ops", "drawLeftArrow"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output, leftArrow);
  EXPECT_EQ(run.errors, "");
}

TEST(OpsCommand, TakesAllThreeFormsOfAName) {
  const ToolFolder folder;
  EXPECT_EQ(folder.run({"ops", "LeftArrow"}).output, leftArrow);
  EXPECT_EQ(folder.run({"ops", "drawLeftArrowWithFrame:enabled:isPressed:"}).output, leftArrow);
}

TEST(OpsCommand, FrameAndFlagsReachTheRoutine) {
  const ToolFolder folder;
  const ToolRun run =
      folder.run({"ops", "--isPressed", "true", "LeftArrow", "--enabled", "false", "--frame", "10,20,24,24"});
  ASSERT_EQ(run.status, 0) << run.errors;
  const json operations = json::parse(run.output);
  EXPECT_EQ(operations[0]["color"], json::parse("[0.333,0.333,0.333,1]"));
  EXPECT_EQ(operations[1]["lineWidth"], 4);
  EXPECT_EQ(operations[1]["path"], json::parse(R"([["M",34,44],["L",14.00008,32],["L",34,20]])"));
}

TEST(OpsCommand, NegativeOriginIsAFrame) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"ops", "Stop", "--frame", "-1.5,-2e1,4,5"});
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(json::parse(run.output)[0]["shape"], json::parse(R"(["rect",-1.5,-20,4,5])"));
}

TEST(OpsCommand, RoutineThatPaintsNothingPrintsAnEmptyArray) {
  const ToolFolder folder;
  EXPECT_EQ(folder.run({"ops", "drawRepeat"}).output, "[\n]\n");
}

TEST(OpsCommand, EveryRoutinePrintsJsonWithTheFieldsOfItsOperations) {
  const std::map<std::string, std::set<std::string>> fields = {
      {"setFillColor", {"op", "color"}},
      {"setStrokeColor", {"op", "color"}},
      {"fill", {"op", "path"}},
      {"stroke", {"op", "path", "lineWidth", "cap", "join", "miterLimit", "dash", "phase"}},
      {"gradient", {"op", "path", "stops", "angle"}},
      {"save", {"op"}},
      {"restore", {"op"}},
      {"clipRect", {"op", "rect"}},
      {"setShadow", {"op", "offset", "blur", "color"}},
      {"setAlpha", {"op", "alpha"}},
      {"setBlendMode", {"op", "mode"}},
      {"beginTransparencyLayer", {"op"}},
      {"endTransparencyLayer", {"op"}},
  };
  const ToolFolder folder;
  for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines()) {
    // The largest frame that is taken, where products would be the first to stop being numbers.
    for (const char* frame : {"0,0,32,32", "0,0,0,0", "-1e100,1e100,1e100,1e100"}) {
      const ToolRun run = folder.run({"ops", routine.member(), "--frame", frame});
      ASSERT_EQ(run.status, 0) << run.errors;
      const json operations = json::parse(run.output, nullptr, false);
      ASSERT_TRUE(operations.is_array()) << routine.name << " at " << frame;
      const std::ptrdiff_t lines = std::ranges::count(run.output, '\n');
      EXPECT_EQ(lines, std::ptrdiff_t(operations.size()) + 2) << routine.name;
      for (const json& operation : operations) {
        ASSERT_TRUE(fields.contains(operation["op"])) << operation;
        std::set<std::string> keys;
        for (const auto& [key, value] : operation.items())
          if (key != "named" && key != "shape") keys.insert(key);
        EXPECT_EQ(keys, fields.at(operation["op"])) << operation;
      }
    }
  }
}

TEST(OpsCommand, UnwritableOutputIsAnError) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"ops", "drawPlay"}, "exec >/dev/full");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors, "tessaluna-artwork: cannot write to standard output\n");
}

}  // namespace
}  // namespace artwork
