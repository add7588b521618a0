#include "gallery/covers/CoverArtHost.h"

#include "gallery/covers/coverFiles.h"
#include "tessaluna/platform/backend/imageHeader.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace gallery {
namespace {

TEST(coverFiles, HaveTheExpectedNamesAndSizes) {
  const struct {
    std::string name;
    std::int64_t width, height;
    bool isWhole;
  } expected[] = {{"wide", 1600, 500, true}, {"tall", 500, 1600, true},  {"square", 600, 600, true},
                  {"tiny", 24, 24, true},    {"huge", 6000, 6000, true}, {"cut-off", 600, 600, false}};
  ASSERT_EQ(coverFiles().size(), std::size(expected) + 1);
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    const CoverFile& file = coverFiles()[i];
    const FileBytes bytes = file.make();
    const auto header = tessaluna::backend::imageHeader(bytes);
    EXPECT_EQ(file.name, expected[i].name);
    ASSERT_TRUE(header) << file.name;
    EXPECT_EQ(header->width, expected[i].width);
    EXPECT_EQ(header->height, expected[i].height);
    EXPECT_EQ(header->isWhole, expected[i].isWhole);
  }
  EXPECT_TRUE(coverFiles().back().make().empty());
}

// The desktop of these tests cannot read the gallery's files: an image of its own replaces them.
struct CoverArtHostTest : harness::StillWorld {
  CoverArtHostTest() {
    host->setReport([this](const std::string& what) { reports.push_back(what); });
    for (const CoverArtHost::Cover& cover : host->covers()) window->contentView()->addSubview(cover.ground);
  }
  ~CoverArtHostTest() override { host->setReport(nullptr); }

  const CoverArtHost::Cover& cover(std::string_view name) const {
    for (const CoverArtHost::Cover& each : host->covers())
      if (each.name == name) return each;
    throw std::out_of_range(std::string(name));
  }
  static Ref<NSImage> redImage() {
    const std::string bytes = std::string("P6 1 1 255\n") + std::string("\xFF\0\0", 3);
    return NSImage::initWithData(std::as_bytes(std::span(bytes)));
  }

  Ref<NSWindow> window = showWindow();
  Ref<CoverArtHost> host = make<CoverArtHost>();
  std::vector<std::string> reports;
};

TEST_F(CoverArtHostTest, HasAThumbnailForEachFileAndOneThatChanges) {
  EXPECT_EQ(host->covers().size(), coverFiles().size() + 1);
  EXPECT_EQ(host->covers().back().name, "changing");
  EXPECT_EQ(cover("absent").thumbnail->image(), nullptr);
  EXPECT_EQ(cover("wide").thumbnail->frame(), (CGRect{1, 1, 96, 96}));
}

TEST_F(CoverArtHostTest, TheTabKeyReachesCoversWithAnImageAndSpaceEnlargesThem) {
  cover("wide").thumbnail->setImage(redImage());
  window->selectNextKeyView();
  EXPECT_EQ(window->firstResponder(), cover("wide").thumbnail.get());
  user.pressKey(" ");
  EXPECT_EQ(reports, std::vector<std::string>{"wide 1 by 1"});
}

TEST_F(CoverArtHostTest, SpaceWithControlOptionOrCommandIsNotThatOfTheCover) {
  cover("wide").thumbnail->setImage(redImage());
  window->selectNextKeyView();
  for (const auto other : {NSEventModifierFlagControl, NSEventModifierFlagOption, NSEventModifierFlagCommand})
    user.pressKey(" ", other);
  EXPECT_EQ(reports, std::vector<std::string>{});
}

TEST_F(CoverArtHostTest, ReportsWhatIsEnlargedAndClosed) {
  const auto thumbnail = cover("wide").thumbnail;
  thumbnail->setImage(redImage());
  thumbnail->accessibilityPerformAction(NSAccessibilityPressAction);
  thumbnail->closeEnlargedView();
  EXPECT_EQ(reports, (std::vector<std::string>{"wide 1 by 1", "wide closed"}));
}

TEST_F(CoverArtHostTest, SetsAllThumbnailsAlike) {
  host->setScaleToScreenResolution(true);
  host->setClosesByClickAndEscape(true);
  host->setPreparesImages(true);
  for (const CoverArtHost::Cover& each : host->covers()) {
    EXPECT_TRUE(each.thumbnail->scaleToScreenResolution());
    EXPECT_TRUE(each.thumbnail->closesByClickAndEscape());
    EXPECT_TRUE(each.thumbnail->preparesImages());
  }
}

TEST_F(CoverArtHostTest, TheLastThumbnailShowsTheImagesOfTheOthersInTurn) {
  const auto red = redImage();
  cover("tall").thumbnail->setImage(red);
  host->changeImage();  // from the first to the second
  EXPECT_EQ(host->covers().back().thumbnail->image(), red);
  for (std::size_t i = 0; i < coverFiles().size() - 2; ++i) host->changeImage();
  EXPECT_EQ(host->covers().back().thumbnail->image(), nullptr) << "that of the absent one";
}

}  // namespace
}  // namespace gallery
