#include "tessaluna/platform/graphics/NSRect.h"

#include <gtest/gtest.h>

#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;

namespace {

const std::string filled =
    R"({"op":"fill","path":[["M",1,2],["L",4,2],["L",4,6],["L",1,6],["Z"]],"shape":["rect",1,2,3,4]})";

Lines fillWith(const std::string& mode) {
  return {R"({"op":"save"})", R"({"op":"setBlendMode","mode":")" + mode + R"("})", filled, R"({"op":"restore"})"};
}

}  // namespace

TEST(NSRect, RectFillReplacesWhatIsThere) {
  EXPECT_EQ(recordingOf([] { NSRectFill({1, 2, 3, 4}); }), fillWith("copy"));
}

TEST(NSRect, RectFillWithOperation2Blends) {
  EXPECT_EQ(recordingOf([] {
              NSRectFillUsingOperation({1, 2, 3, 4}, static_cast<NSCompositingOperation>(2));
            }),
            fillWith("normal"));
}

TEST(NSRect, EveryOperationHasItsMode) {
  const std::pair<int, std::string> all[] = {{0, "clear"},           {1, "copy"},          {2, "normal"},
                                             {3, "sourceIn"},        {4, "sourceOut"},     {5, "sourceAtop"},
                                             {6, "destinationOver"}, {7, "destinationIn"}, {8, "destinationOut"},
                                             {9, "destinationAtop"}, {10, "xor"},          {13, "plusLighter"}};
  for (const auto& [value, mode] : all)
    EXPECT_EQ(recordingOf([value = value] {
                NSRectFillUsingOperation({1, 2, 3, 4}, static_cast<NSCompositingOperation>(value));
              }),
              fillWith(mode));
}

TEST(NSRect, RectClipIntersectsTheClip) {
  EXPECT_EQ(recordingOf([] { NSRectClip({1, 2, 3, 4}); }), (Lines{R"({"op":"clipRect","rect":[1,2,3,4]})"}));
}
