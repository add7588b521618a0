#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/tools/artwork/PngPicture.h"
#include "tests/tools/artwork/ToolRun.h"

namespace artwork {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Pixel = PngPicture::Pixel;

constexpr Pixel transparent = {0, 0, 0, 0}, black = {0, 0, 0, 255};

// Renders to a.png and reads it; the test fails and the picture is empty unless that goes well.
PngPicture rendered(const ToolFolder& folder, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "render");
  arguments.insert(arguments.end(), {"-o", "a.png"});
  const ToolRun run = folder.run(arguments);
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(run.output + run.errors, "");
  EXPECT_THAT(folder.files(), ElementsAre("a.png"));
  const std::optional<PngPicture> picture = readPng(folder / "a.png");
  EXPECT_TRUE(picture);
  return picture.value_or(PngPicture());
}

void expectSize(const PngPicture& picture, int width, int height) {
  EXPECT_EQ(picture.width, width);
  EXPECT_EQ(picture.height, height);
}

TEST(RenderCommand, PictureIsTheFrameWithTwoPointsAround) {
  const ToolFolder folder;
  const PngPicture picture = rendered(folder, {"drawStop"});
  expectSize(picture, 36, 36);
  // Half of the outline, a quarter of a point, lies outside of the frame.
  EXPECT_EQ(picture.at(0, 18), transparent);
  EXPECT_EQ(picture.at(1, 18).alpha, 64);
  EXPECT_EQ(picture.at(2, 18).alpha, 255);
  EXPECT_EQ(picture.at(33, 18).alpha, 255);
  EXPECT_EQ(picture.at(34, 18).alpha, 64);
  EXPECT_EQ(picture.at(35, 18), transparent);
}

TEST(RenderCommand, PictureIsRoundedOutwardToWholePoints) {
  const ToolFolder folder;
  // The picture reaches from -1.5 to 6.75 and from -0.75 to 5.75, so its corner is (-2, -1).
  const PngPicture picture = rendered(folder, {"Stop", "--frame", "0.5,1.25,4.25,2.5"});
  expectSize(picture, 9, 7);
  // Of the glyph's lower left corner, with its outline: (2.25, 2) in the picture, of the upper right one (7, 5).
  EXPECT_EQ(picture.at(1, 3), transparent);
  EXPECT_GT(picture.at(2, 3).alpha, 150);
  EXPECT_GT(picture.at(6, 3).alpha, 150);
  EXPECT_EQ(picture.at(7, 3), transparent);
  EXPECT_EQ(picture.at(4, 1), transparent);
  EXPECT_GT(picture.at(4, 2).alpha, 150);
  EXPECT_GT(picture.at(4, 4).alpha, 150);
  EXPECT_EQ(picture.at(4, 5), transparent);
}

TEST(RenderCommand, OriginOfTheFrameMovesThePictureAlong) {
  const ToolFolder folder;
  const PngPicture atZero = rendered(folder, {"Shuffle", "--frame", "0,0,40,40"});
  EXPECT_FALSE(atZero.isEmpty());
  const PngPicture away = rendered(folder, {"Shuffle", "--frame", "-300,7000,40,40"});
  expectSize(away, atZero.width, atZero.height);
  // Numbers are rounded elsewhere so far from 0, by which a pixel may be one step more or less.
  for (int y = 0; y < atZero.height; ++y) {
    for (int x = 0; x < atZero.width; ++x) {
      const PngPicture::Pixel a = atZero.at(x, y), b = away.at(x, y);
      EXPECT_LE(std::abs(a.alpha - b.alpha), 1) << x << ", " << y;
      EXPECT_LE(std::abs(a.blue - b.blue), 1) << x << ", " << y;
    }
  }
}

TEST(RenderCommand, SizeIsThePictureAndTheFrame) {
  const ToolFolder folder;
  const PngPicture picture = rendered(folder, {"CloseButton", "--size", "32x16"});
  expectSize(picture, 32, 16);
  EXPECT_EQ(picture.at(16, 7), black);
  EXPECT_EQ(picture.at(1, 7), transparent);
}

TEST(RenderCommand, UpIsUp) {
  const ToolFolder folder;
  // The fixed cross hangs from the upper left corner of its frame.
  const PngPicture picture = rendered(folder, {"CloseCross", "--size", "40x40"});
  EXPECT_EQ(picture.at(7, 7), black);
  EXPECT_EQ(picture.at(7, 32), transparent);
}

TEST(RenderCommand, ScaleIsPixelsAPoint) {
  const ToolFolder folder;
  expectSize(rendered(folder, {"Play", "--size", "32x20", "--scale", "2"}), 64, 40);
  expectSize(rendered(folder, {"Play", "--size", "32x20", "--scale", "1.25"}), 40, 25);
  // 100 times 1.1 is a little more than 110.
  expectSize(rendered(folder, {"Play", "--size", "100x20", "--scale", "1.1"}), 110, 22);
  expectSize(rendered(folder, {"Play", "--size", "15x15", "--scale", "1.5"}), 23, 23);
  expectSize(rendered(folder, {"Play", "--size", "10x10", "--scale", "0.1"}), 1, 1);
  expectSize(rendered(folder, {"Play", "--size", "3x3", "--scale", "0.1"}), 1, 1);
  expectSize(rendered(folder, {"Play", "--size", "10x10", "--scale", "16"}), 160, 160);
}

TEST(RenderCommand, BackgroundFillsThePictureToItsLastPixel) {
  const ToolFolder folder;
  const std::vector<std::string> repeat = {"Repeat", "--size", "15x15", "--scale", "1.5", "--background"};
  const auto on = [&](const std::string& background) {
    std::vector<std::string> arguments = repeat;
    arguments.push_back(background);
    return rendered(folder, arguments);
  };
  EXPECT_TRUE(on("none").isEmpty());
  EXPECT_THAT(on("light").pixels, testing::Each(Pixel{255, 255, 255, 255}));
  EXPECT_THAT(on("#12Ab9f").pixels, testing::Each(Pixel{0x12, 0xab, 0x9f, 255}));
  const PngPicture dark = on("dark");
  EXPECT_LT(dark.at(0, 0).red, 64);
  EXPECT_THAT(dark.pixels, testing::Each(Pixel{dark.at(0, 0)}));
}

TEST(RenderCommand, BackgroundLiesUnderTheGlyph) {
  const ToolFolder folder;
  const PngPicture picture = rendered(folder, {"CloseButton", "--size", "16x16", "--background", "#ff0000"});
  EXPECT_EQ(picture.at(0, 8), (Pixel{255, 0, 0, 255}));
  EXPECT_EQ(picture.at(8, 8), black);
}

TEST(RenderCommand, ColorsAreNotPremultiplied) {
  const ToolFolder folder;
  // Blue at every place where it is seen at all, however little.
  const PngPicture picture = rendered(folder, {"Shuffle", "--isSelected", "true"});
  int partial = 0;
  for (const Pixel& pixel : picture.pixels) {
    if (pixel.alpha == 0) continue;
    EXPECT_EQ(pixel, (Pixel{0, 0, 255, pixel.alpha}));
    partial += pixel.alpha < 255;
  }
  EXPECT_GT(partial, 20);
}

TEST(RenderCommand, FlagsReachTheRoutine) {
  const ToolFolder folder;
  EXPECT_EQ(rendered(folder, {"CloseButton", "--size", "16x16"}).at(4, 8), transparent);
  EXPECT_GT(rendered(folder, {"CloseButton", "--size", "16x16", "--isPressed", "true"}).at(4, 8).alpha, 0);
}

TEST(RenderCommand, ImageDrawsFromItsOwnOriginAndCutsWhatLiesOutside) {
  const ToolFolder folder;
  const PngPicture picture = rendered(folder, {"LeftArrow", "--image"});
  expectSize(picture, 16, 16);
  // The arrow's ends lie on the image's corners: nothing of them is seen in the two points around.
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(picture.at(i, 1), transparent);
    EXPECT_EQ(picture.at(14, i), transparent);
  }
  EXPECT_GT(picture.at(13, 2).alpha, 0);
}

TEST(RenderCommand, ImageWithSizeIsMadeAtThatSize) {
  const ToolFolder folder;
  const PngPicture image = rendered(folder, {"CloseCross", "--image", "--size", "100x100"});
  expectSize(image, 100, 100);
  EXPECT_EQ(image.at(7, 7), black);
  EXPECT_EQ(image.at(50, 50), transparent);
  EXPECT_EQ(image, rendered(folder, {"CloseCross", "--size", "100x100"}));
}

TEST(RenderCommand, EmptyFrameGivesAPicture) {
  const ToolFolder folder;
  expectSize(rendered(folder, {"Play", "--frame", "3,3,0,0"}), 4, 4);
}

TEST(RenderCommand, PictureTooLargeIsAnErrorAndLeavesNoFile) {
  const ToolFolder folder;
  for (const std::vector<std::string>& size : {std::vector<std::string>{"--size", "1e6x1e6"},
                                               {"--size", "100000x1"},
                                               {"--size", "30000x30000"},
                                               {"--size", "4000x4000", "--scale", "16"},
                                               {"--frame", "0,0,1e100,1e100"}}) {
    std::vector<std::string> arguments = {"render", "Play", "-o", "a.png"};
    arguments.insert(arguments.end(), size.begin(), size.end());
    const ToolRun run = folder.run(arguments);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, testing::MatchesRegex("tessaluna-artwork: a picture of .* pixels is too large\n"));
    EXPECT_THAT(folder.files(), IsEmpty());
  }
}

TEST(RenderCommand, UnwritableFileIsAnError) {
  const ToolFolder folder;
  fs::create_directory(folder / "folder.png");
  const auto messageFor = [&](const std::string& path) {
    const ToolRun run = folder.run({"render", "Play", "-o", path});
    EXPECT_EQ(run.status, 1);
    return run.errors;
  };
  EXPECT_EQ(messageFor("none/a.png"), "tessaluna-artwork: cannot write 'none/a.png': No such file or directory\n");
  EXPECT_EQ(messageFor("folder.png"), "tessaluna-artwork: cannot write 'folder.png': it is a directory\n");
  // A pipe of the test's own stands for all devices: a tool that went wrong would move its file over a real one.
  ASSERT_EQ(::mkfifo((folder / "pipe.png").c_str(), 0600), 0);
  EXPECT_EQ(messageFor("pipe.png"), "tessaluna-artwork: cannot write 'pipe.png': it is not a regular file\n");
  EXPECT_TRUE(fs::is_fifo(folder / "pipe.png"));
  EXPECT_THAT(folder.files(), ElementsAre("folder.png", "pipe.png"));
  EXPECT_THAT(fs::is_empty(folder / "folder.png"), true);
}

TEST(RenderCommand, FileThatCannotBeWrittenToItsEndKeepsWhatWasThere) {
  const ToolFolder folder;
  writeFile(folder / "a.png", "what was there");
  // No file may grow beyond one block; the signal that tells of it is ignored so that the write fails instead.
  const ToolRun run = folder.run({"render", "Shuffle", "-o", "a.png", "--size", "500x500"}, "trap '' XFSZ; ulimit -f 1");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.errors, testing::MatchesRegex("tessaluna-artwork: cannot write 'a.png': .+\n"));
  EXPECT_EQ(readFile(folder / "a.png"), "what was there");
  EXPECT_THAT(folder.files(), ElementsAre("a.png"));
}

TEST(RenderCommand, FileIsReplaced) {
  const ToolFolder folder;
  writeFile(folder / "a.png", "what was there");
  expectSize(rendered(folder, {"Play"}), 36, 36);
}

TEST(RenderCommand, LinkStaysALink) {
  const ToolFolder folder;
  fs::create_symlink("b.png", folder / "a.png");
  EXPECT_EQ(folder.run({"render", "Play", "-o", "a.png"}).status, 0);
  EXPECT_TRUE(fs::is_symlink(folder / "a.png"));
  EXPECT_TRUE(readPng(folder / "b.png"));
}

TEST(RenderCommand, SameCommandWritesTheSameBytes) {
  const ToolFolder folder;
  for (const char* name : {"a.png", "b.png"}) EXPECT_EQ(folder.run({"render", "Shuffle", "-o", name}).status, 0);
  EXPECT_EQ(readFile(folder / "a.png"), readFile(folder / "b.png"));
}

}  // namespace
}  // namespace artwork
