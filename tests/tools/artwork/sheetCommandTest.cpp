#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <string>

#include "tessaluna/uikit/stylekit/Routines.h"
#include "tests/tools/artwork/PngPicture.h"
#include "tests/tools/artwork/ToolRun.h"

namespace artwork {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

TEST(SheetCommand, EveryFamilyGivesAPictureWithSomethingOnIt) {
  std::set<TessalunaUIKit::RoutineFamily> families;
  for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines()) families.insert(routine.family);
  for (const TessalunaUIKit::RoutineFamily family : families) {
    const ToolFolder folder;
    const std::string name(TessalunaUIKit::familyName(family));
    const ToolRun run = folder.run({"sheet", "-o", "a.png", "--family", name});
    EXPECT_EQ(run.status, 0) << name << ": " << run.errors;
    const std::optional<PngPicture> picture = readPng(folder / "a.png");
    ASSERT_TRUE(picture) << name;
    EXPECT_FALSE(picture->isEmpty()) << name;
  }
}

TEST(SheetCommand, AScaleMakesMorePixels) {
  const ToolFolder folder;
  folder.run({"sheet", "-o", "one.png", "--family", "Transport"});
  folder.run({"sheet", "-o", "two.png", "--family", "Transport", "--scale", "2"});
  const auto one = readPng(folder / "one.png"), two = readPng(folder / "two.png");
  ASSERT_TRUE(one && two);
  EXPECT_EQ(two->width, 2 * one->width);
  EXPECT_EQ(two->height, 2 * one->height);
}

TEST(SheetCommand, ASheetMayBeAnSvgFile) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"sheet", "-o", "a.svg", "--family", "Transport"});
  EXPECT_EQ(run.status, 0) << run.errors;
  std::ifstream file(folder / "a.svg");
  std::string start(5, ' ');
  file.read(start.data(), 5);
  EXPECT_EQ(start.substr(0, 4), "<svg") << start;
}

TEST(SheetCommand, ANameThatEndsInNeitherPngNorSvgIsRefused) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"sheet", "-o", "a.jpg"});
  EXPECT_NE(run.status, 0);
  EXPECT_THAT(run.errors, HasSubstr("'a.jpg' ends in neither .png nor .svg"));
}

TEST(SheetCommand, ADarkGroundIsInEveryCorner) {
  const ToolFolder folder;
  folder.run({"sheet", "-o", "a.png", "--family", "Transport", "--background", "#102030"});
  const auto picture = readPng(folder / "a.png");
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->at(0, 0), (PngPicture::Pixel{0x10, 0x20, 0x30, 255}));
  EXPECT_EQ(picture->at(picture->width - 1, picture->height - 1), (PngPicture::Pixel{0x10, 0x20, 0x30, 255}));
}

TEST(SheetCommand, OnADarkGroundWhatFollowsItNeedsNoTiles) {
  const ToolFolder folder;
  const auto groundPixels = [&](std::vector<std::string> more) {
    std::vector<std::string> words{"sheet", "-o", "a.png", "--family", "Transport", "--background", "#101010"};
    words.insert(words.end(), more.begin(), more.end());
    folder.run(words);
    const auto picture = readPng(folder / "a.png");
    int count = 0;
    for (int y = 0; picture && y < picture->height; ++y)
      for (int x = 0; x < picture->width; ++x) count += picture->at(x, y) == PngPicture::Pixel{0x10, 0x10, 0x10, 255};
    return count;
  };
  // Without it, glyphs that are dark by themselves stand on tiles.
  EXPECT_GT(groundPixels({"--follow"}), groundPixels({}));
}

int countOf(const PngPicture& picture, PngPicture::Pixel wanted) {
  int count = 0;
  for (const PngPicture::Pixel& pixel : picture.pixels) count += pixel == wanted;
  return count;
}

TEST(SheetCommand, AGlyphThatTheBackgroundWouldHideHasATileBehindIt) {
  const ToolFolder folder;
  folder.run({"sheet", "-o", "white.png", "--family", "Browse icons", "--background", "light"});
  folder.run({"sheet", "-o", "dark.png", "--family", "Browse icons", "--background", "dark"});
  const auto white = readPng(folder / "white.png"), dark = readPng(folder / "dark.png");
  ASSERT_TRUE(white && dark);
  const int tilesOnWhite = countOf(*white, {51, 51, 51, 255}), tilesOnDark = countOf(*dark, {224, 224, 224, 255});
  EXPECT_GT(tilesOnWhite, 1000) << "the album is white";
  EXPECT_GT(tilesOnDark, 5 * tilesOnWhite) << "all others are black";
  EXPECT_EQ(dark->at(0, 0), (PngPicture::Pixel{32, 32, 32, 255}));
}

TEST(SheetCommand, AnEmptyFileNameIsAnError) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"sheet", "-o", "", "--family", "Browse icons"});
  EXPECT_EQ(run.status, 2);
  EXPECT_THAT(run.errors, HasSubstr("-o: '' ends in neither"));
}

TEST(SheetCommand, EveryFlagIsOnInHalfOfTheTiles) {
  const ToolFolder folder;
  folder.run({"sheet", "-o", "a.png", "--family", "Arrows and crosses"});
  const auto picture = readPng(folder / "a.png");
  ASSERT_TRUE(picture);
  // The third flag makes arrows white, and the first, where it is off, gray.
  EXPECT_GT(countOf(*picture, {255, 255, 255, 255}), 100);
  EXPECT_GT(countOf(*picture, {85, 85, 85, 255}), 100);
}

TEST(SheetCommand, PauseHasTheFrameInWhichItsBarsAreUpright) {
  const ToolFolder folder;
  folder.run({"sheet", "-o", "sheet.png", "--family", "Transport"});
  folder.run({"render", "Pause", "-o", "pause.png", "--size", "32x32"});
  const auto sheet = readPng(folder / "sheet.png"), pause = readPng(folder / "pause.png");
  ASSERT_TRUE(sheet && pause);
  bool isFound = false;
  for (int top = 0; top <= sheet->height - pause->height; ++top)
    for (int left = 0; left <= sheet->width - pause->width; ++left) {
      bool isSame = true;
      for (int y = 1; isSame && y < pause->height - 1; ++y)
        for (int x = 1; isSame && x < pause->width - 1; ++x) isSame = sheet->at(left + x, top + y) == pause->at(x, y);
      isFound = isFound || isSame;
    }
  EXPECT_TRUE(isFound);
}

TEST(SheetCommand, ToFollowNeedsAGround) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"sheet", "-o", "a.png", "--follow"});
  EXPECT_NE(run.status, 0);
  EXPECT_THAT(run.errors, HasSubstr("--follow needs a --background"));
}

TEST(SheetCommand, AnUnknownFamilyGetsTheNearestNamesAndNoFile) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"sheet", "-o", "a.png", "--family", "Mod icons"});
  EXPECT_NE(run.status, 0);
  EXPECT_THAT(run.errors, HasSubstr("Mood icons"));
  EXPECT_THAT(folder.files(), IsEmpty());
}

TEST(RenderCommand, EveryRoutineAsSvgLooksLikeItsPng) {
  for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines()) {
    const ToolFolder folder;
    const std::string name = routine.member();
    const ToolRun svg = folder.run({"render", name, "-o", "a.svg", "--background", "light"});
    ASSERT_EQ(svg.status, 0) << name << ": " << svg.errors;
    ASSERT_EQ(folder.run({"render", name, "-o", "a.png", "--background", "light"}).status, 0) << name;
    const std::string convert =
        "rsvg-convert -o '" + (folder / "b.png").string() + "' '" + (folder / "a.svg").string() + "'";
    ASSERT_EQ(std::system(convert.c_str()), 0) << name;
    const auto ours = readPng(folder / "a.png"), theirs = readPng(folder / "b.png");
    ASSERT_TRUE(ours && theirs) << name;
    ASSERT_EQ(ours->width, theirs->width) << name;
    ASSERT_EQ(ours->height, theirs->height) << name;
    double sum = 0;
    for (std::size_t i = 0; i < ours->pixels.size(); ++i) {
      const PngPicture::Pixel a = ours->pixels[i], b = theirs->pixels[i];
      sum += std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
    }
    EXPECT_LE(sum / (3.0 * static_cast<double>(ours->pixels.size())), 2) << name;
  }
}

}  // namespace
}  // namespace artwork
