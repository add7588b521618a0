#include "tools/artwork/svgFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/artwork/ToolRun.h"
#include "tools/artwork/Failure.h"

namespace artwork {
namespace {

TEST(SvgFile, WhatSvgCannotSayIsAFailureThatNamesItAndNoFile) {
  const ToolFolder folder;
  tessaluna::backend::svg::SvgCanvas canvas({0, 0, 10, 10});
  const tessaluna::backend::Path square = tessaluna::backend::Path::rect({1, 1, 4, 4});
  canvas.fillPath(square, tessaluna::backend::FillRule::NonZero);
  canvas.setBlendMode(tessaluna::backend::BlendMode::SourceOut);
  canvas.fillPath(square, tessaluna::backend::FillRule::NonZero);
  const std::string path = (folder / "a.svg").string();
  try {
    writeSvg(path, canvas);
    ADD_FAILURE() << "it was written";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.what(), path + ": SVG cannot say \"source out\" over something that is already in its layer");
  }
  EXPECT_THAT(folder.files(), testing::IsEmpty());
}

TEST(SvgFile, WhatSvgCanSayIsInTheFile) {
  const ToolFolder folder;
  tessaluna::backend::svg::SvgCanvas canvas({0, 0, 10, 10});
  canvas.fillPath(tessaluna::backend::Path::rect({1, 1, 4, 4}), tessaluna::backend::FillRule::NonZero);
  writeSvg((folder / "a.svg").string(), canvas);
  EXPECT_THAT(folder.files(), testing::ElementsAre("a.svg"));
}

}  // namespace
}  // namespace artwork
