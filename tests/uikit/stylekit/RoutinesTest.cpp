#include "tessaluna/uikit/stylekit/Routines.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>
#include <thread>

#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/countingNew.h"
#include "tests/harness/expectedFile.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using harness::Lines;
using harness::recordingOf;

namespace {

enum class Image { None, Exists };

// The kit's interface as its users know it, so that a change of it fails here.
struct Published {
  std::string_view selector;
  CGRect defaultFrame;
  std::vector<bool> defaults;
  Image image = Image::Exists;
};

const std::vector<Published>& published() {
  using enum Image;
  static const std::vector<Published> all = [] {
    std::vector<Published> list{
        {"drawLeftArrowWithFrame:enabled:isPressed:", {1, 1, 12, 12}, {true, false}},
        {"drawRightArrowWithFrame:enabled:isPressed:", {1, 1, 12, 12}, {true, false}},
        {"drawForwardArrowWithFrame:enabled:isPressed:isWhite:", {0, 0, 50, 50}, {true, false, false}},
        {"drawBackwardArrowWithFrame:enabled:isPressed:isWhite:", {0, 0, 50, 50}, {true, false, false}},
        {"drawCloseCrossWithFrame:", {0, 0, 14, 14}, {}},
        {"drawCloseButtonWithFrame:isPressed:", {0, 0, 16, 16}, {false}, None},
        {"drawPlayWithButtonFrame:", {0, 0, 32, 32}, {}, None},
        {"drawPauseWithButtonFrame:", {0, 0, 32, 32}, {}, None},
        {"drawStopWithButtonFrame:", {0, 0, 32, 32}, {}, None},
        {"drawPreviousWithButtonFrame:", {0, 0, 32, 32}, {}, None},
        {"drawNextWithButtonFrame:", {0, 0, 32, 32}, {}, None},
        {"drawRepeatWithButtonFrame:", {0, 0, 32, 32}, {}, None},
        {"drawInvertPolarityWithButtonFrame:", {0, 0, 32, 32}, {}, None},
        {"drawShuffleWithButtonFrame:isSelected:isPressed:", {0, 0, 32, 32}, {true, false}, None},
        {"drawPlayPauseAlbumOverlayWithFrame:isPressed:isOver:isPlaying:", {0, 0, 76, 76}, {false, true, true}},
        {"drawPlayingAlbumOverlayWithFrame:isPressed:isOver:", {0, 0, 76, 76}, {false, true}},
        {"drawFavoriteAlbumOverlayWithFrame:isSelected:isPressed:isOver:", {0, 0, 38, 38}, {true, false, true}},
        {"drawMoreAlbumOverlayWithFrame:isPressed:isOver:", {0, 0, 44, 22}, {false, true}},
        {"drawTrackRowPlayPauseWithFrame:isPressed:isOver:isPlaying:", {0, 0, 15, 15}, {false, true, true}, None},
        {"drawTrackRowPlayingWithFrame:", {0, 0, 15, 15}, {}, None},
        {"drawTrackMoreWithFrame:isPressed:isOver:", {0, 0, 15, 15}, {false, true}, None},
        {"drawEmptyAlbumImageWithFrame:", {5, 3, 200, 200}, {}, None},
        {"drawMissingAlbumArtWithFrame:", {0, 0, 200, 200}, {}},
        {"drawLoadingAlbumArtWithFrame:", {0, 0, 200, 200}, {}},
        {"drawIconAlbumWithFrame:", {0, 0, 50, 50}, {}},
        {"drawBookButtonWithFrame:isPressed:", {0, 0, 16, 16}, {false}},
        {"drawSimilarArtistsWithFrame:isPressed:", {0, 0, 15, 15}, {false}},
        {"drawCreditsButtonWithFrame:isPressed:", {0, 0, 20, 20}, {false}},
        {"drawMqaLogoWithButtonFrame:enabled:", {0, 0, 65, 18}, {true}},
        {"drawHighResAudioLogoWithFrame:", {0, 0, 200, 200}, {}},
        {"drawTidalLogoWideWithFrame:", {0, 0, 835, 332}, {}},
        {"drawTidalLogoTallWithFrame:", {0, 0, 586, 354}, {}},
        {"drawTidalLogoSmallWithFrame:", {0, 0, 150, 150}, {}},
        {"drawTidalMusicIconWithFrame:", {0, 0, 100, 100}, {}},
    };
    for (const char* selector :
         {"drawTidalIconNewWithFrame:", "drawTidalIconGenresWithFrame:", "drawTidalIconMyMusicWithFrame:",
          "drawTidalIconRisingWithFrame:", "drawTidalIconDiscoveryWithFrame:", "drawTidalIconSearchWithFrame:",
          "drawTidalIconPlaylistWithFrame:", "drawTidalIconAlbumWithFrame:"})
      list.push_back({selector, {0, 0, 50, 50}, {}});
    for (const char* selector :
         {"drawMoodRelaxWithFrame:isWhite:", "drawMoodPartyWithFrame:isWhite:", "drawMoodWorkoutWithFrame:isWhite:",
          "drawMoodLoveWithFrame:isWhite:", "drawMoodFocusWithFrame:isWhite:", "drawMoodDinnerWithFrame:isWhite:",
          "drawMoodCelebritiesWithFrame:isWhite:", "drawMoodMediaWithFrame:isWhite:", "drawMoodSeasonalWithFrame:isWhite:",
          "drawMoodHistoryWithFrame:isWhite:", "drawMoodChartsWithFrame:isWhite:", "drawMoodEventsWithFrame:isWhite:"})
      list.push_back({selector, {0, 0, 200, 200}, {false}});
    return list;
  }();
  return all;
}

const Published* publishedAs(const Routine& routine) {
  for (const Published& entry : published())
    if (entry.selector == routine.selector()) return &entry;
  return nullptr;
}

// Flag values that can be passed as a span.
class Flags {
 public:
  explicit Flags(const std::vector<bool>& values) {
    std::copy(values.begin(), values.end(), values_);
    size_ = values.size();
  }
  operator std::span<const bool>() const { return {values_, size_}; }  // NOLINT(google-explicit-constructor)

 private:
  bool values_[8] = {};
  std::size_t size_ = 0;
};

std::vector<bool> defaultsOf(const Routine& routine) {
  std::vector<bool> values;
  for (const RoutineFlag& flag : routine.flags) values.push_back(flag.isOnByDefault);
  return values;
}

// All combinations, the defaults first.
std::vector<std::vector<bool>> combinationsOf(const Routine& routine) {
  std::vector<std::vector<bool>> all;
  for (unsigned bits = 0; bits < 1u << routine.flags.size(); ++bits) {
    std::vector<bool> values = defaultsOf(routine);
    for (std::size_t i = 0; i < values.size(); ++i)
      if (bits >> i & 1) values[i] = !values[i];
    all.push_back(values);
  }
  return all;
}

std::string title(const Routine& routine, CGRect frame, const std::vector<bool>& values) {
  std::string text = "# " + routine.member() + " " + std::string(routine.frameArgument) + " " + numberText(frame.origin.x) +
                     "," + numberText(frame.origin.y) + "," + numberText(frame.size.width) + "," +
                     numberText(frame.size.height);
  for (std::size_t i = 0; i < values.size(); ++i)
    text += " " + std::string(routine.flags[i].name) + (values[i] ? " true" : " false");
  return text;
}

// The lines of an image that is rendered into its own rectangle, without those that place it there.
Lines renderingOf(const Ref<NSImage>& image) {
  Lines lines = recordingOf([&] { image->drawInRect({{0, 0}, image->size()}); });
  EXPECT_EQ(lines.at(0), R"({"op":"save"})");
  EXPECT_TRUE(lines.at(1).starts_with(R"({"op":"clipRect","rect":[0,0,)"));
  EXPECT_EQ(lines.at(2), R"({"op":"concat","transform":[1,0,0,1,0,0]})");
  EXPECT_EQ(lines.back(), R"({"op":"restore"})");
  return {lines.begin() + 3, lines.end() - 1};
}

class EveryRoutine : public testing::TestWithParam<const Routine*> {
 protected:
  const Routine& routine = *GetParam();
};

class EveryImageRoutine : public EveryRoutine {};

template <class Predicate>
std::vector<const Routine*> routinesWith(Predicate predicate) {
  std::vector<const Routine*> list;
  for (const Routine& routine : routines())
    if (predicate(routine)) list.push_back(&routine);
  return list;
}

std::string nameOf(const testing::TestParamInfo<const Routine*>& info) { return std::string(info.param->name); }

INSTANTIATE_TEST_SUITE_P(Kit, EveryRoutine, testing::ValuesIn(routinesWith([](const Routine&) { return true; })), nameOf);
INSTANTIATE_TEST_SUITE_P(Kit, EveryImageRoutine,
                         testing::ValuesIn(routinesWith([](const Routine& r) { return r.image != nullptr; })), nameOf);

}  // namespace

TEST(Routines, NamesAreUnique) {
  std::set<std::string_view> names;
  for (const Routine& routine : routines()) EXPECT_TRUE(names.insert(routine.name).second) << routine.name;
}

TEST(Routines, ARoutineIsFoundByNameMemberAndSelector) {
  const Routine* routine = findRoutine("LeftArrow");
  ASSERT_NE(routine, nullptr);
  EXPECT_EQ(findRoutine("drawLeftArrow"), routine);
  EXPECT_EQ(findRoutine("drawLeftArrowWithFrame:enabled:isPressed:"), routine);
  EXPECT_EQ(findRoutine("drawLeftArrowWithFrame:"), nullptr);
  EXPECT_EQ(findRoutine("leftArrow"), nullptr);
  EXPECT_EQ(findRoutine(""), nullptr);
}

TEST(Routines, TheFamiliesThatExistAreWhole) {
  std::map<RoutineFamily, std::set<std::string>> selectors;
  for (const Routine& routine : routines()) selectors[routine.family].insert(routine.selector());
  std::size_t next = 0;
  // In the order of the list above, how many of it each family has.
  const std::pair<RoutineFamily, std::size_t> families[] = {{RoutineFamily::ArrowsAndCrosses, 6},
                                                            {RoutineFamily::Transport, 8},
                                                            {RoutineFamily::AlbumOverlays, 4},
                                                            {RoutineFamily::TrackRow, 3},
                                                            {RoutineFamily::Placeholders, 4},
                                                            {RoutineFamily::InfoButtonGlyphs, 3},
                                                            {RoutineFamily::FormatAndServiceBadges, 5},
                                                            {RoutineFamily::Browse, 9},
                                                            {RoutineFamily::Mood, 12}};
  for (const auto& [family, count] : families) {
    std::set<std::string> expected;
    for (std::size_t i = 0; i < count && next < published().size(); ++i)
      expected.insert(std::string(published()[next++].selector));
    EXPECT_EQ(selectors[family], expected) << familyName(family);
  }
  EXPECT_EQ(next, 54u);
  EXPECT_EQ(published().size(), 54u);
  EXPECT_EQ(selectors.size(), std::size(families));
}

TEST(Routines, ARoutineOfEachFamilyHasAFamilyName) {
  for (const Routine& routine : routines()) EXPECT_FALSE(familyName(routine.family).empty());
  EXPECT_EQ(familyName(RoutineFamily::ArrowsAndCrosses), "Arrows and crosses");
}

TEST_P(EveryRoutine, HasItsPublishedSelectorFrameAndDefaults) {
  const Published* entry = publishedAs(routine);
  ASSERT_NE(entry, nullptr) << routine.selector();
  EXPECT_EQ(routine.defaultFrame, entry->defaultFrame);
  EXPECT_EQ(defaultsOf(routine), entry->defaults);
  EXPECT_EQ(routine.member(), "draw" + std::string(routine.name));
}

TEST_P(EveryRoutine, HasAnImageRoutineExactlyWhereOneIsPublished) {
  const Published* entry = publishedAs(routine);
  ASSERT_NE(entry, nullptr);
  const bool hasImage = entry->image == Image::Exists;
  EXPECT_EQ(routine.image != nullptr, hasImage);
  EXPECT_EQ(routine.imageByDefault != nullptr, hasImage);
  EXPECT_EQ(routine.imageMember().has_value(), hasImage);
  EXPECT_EQ(routine.imageSelector().has_value(), hasImage);
}

TEST_P(EveryImageRoutine, NamesItsImageRoutineByTheRule) {
  EXPECT_EQ(routine.imageMember(), "imageOf" + std::string(routine.name));
  std::string selector = "imageOf" + std::string(routine.name) + "WithImageSize:";
  for (const RoutineFlag& flag : routine.flags) selector += std::string(flag.name) + ":";
  EXPECT_EQ(routine.imageSelector(), selector);
}

TEST_P(EveryRoutine, WithoutArgumentsDrawsItsDefaults) {
  EXPECT_EQ(recordingOf([&] { routine.drawByDefault(); }),
            recordingOf([&] { routine.draw(routine.defaultFrame, Flags(defaultsOf(routine))); }));
}

TEST_P(EveryRoutine, DrawsTheSameEachTime) {
  const auto draw = [&] { routine.draw(routine.defaultFrame, Flags(defaultsOf(routine))); };
  EXPECT_EQ(recordingOf(draw), recordingOf(draw));
}

TEST(Routines, ThreadsThatDrawAtOnceDrawWhatOneDraws) {
  const auto drawAll = [] {
    return harness::pixelsOf({250, 250}, [] {
      for (const Routine& routine : routines()) {
        routine.drawByDefault();
        if (routine.imageByDefault) routine.imageByDefault()->drawInRect({{40, 40}, {190, 190}});
      }
    });
  };
  std::vector<tessaluna::backend::raster::Bitmap> drawn;
  for (int i = 0; i < 4; ++i) drawn.push_back(harness::pixelsOf({1, 1}, [] {}));
  std::vector<std::thread> threads;
  for (auto& bitmap : drawn) threads.emplace_back([&] { bitmap = drawAll(); });
  for (std::thread& thread : threads) thread.join();
  const auto alone = drawAll();
  for (const auto& bitmap : drawn) EXPECT_TRUE(harness::arePixelsEqual(bitmap, alone));
}

TEST_P(EveryRoutine, LeavesNoStateAndNoLayerBehind) {
  for (const auto& values : combinationsOf(routine)) {
    const Lines lines = recordingOf([&] { routine.draw(routine.defaultFrame, Flags(values)); });
    EXPECT_EQ(harness::only("save", lines).size(), harness::only("restore", lines).size());
    EXPECT_EQ(harness::only("beginTransparencyLayer", lines).size(), harness::only("endTransparencyLayer", lines).size());
    int depth = 0;
    for (const std::string& line : lines) {
      depth += line == R"({"op":"save"})" ? 1 : line == R"({"op":"restore"})" ? -1 : 0;
      for (const char* lasting : {"clipRect", "setShadow", "setAlpha", "setBlendMode"})
        EXPECT_FALSE(depth == 0 && line.starts_with(std::string(R"({"op":")") + lasting)) << line;
    }
  }
}

TEST_P(EveryRoutine, DrawsInAZeroSizedFrameWithoutFailing) {
  for (const auto& values : combinationsOf(routine)) {
    const Lines usual = recordingOf([&] { routine.draw(routine.defaultFrame, Flags(values)); });
    const Lines flat = recordingOf([&] { routine.draw({3, 4, 0, 0}, Flags(values)); });
    // A gradient across nothing is the one operation that may be left out.
    EXPECT_GE(flat.size() + harness::only("gradient", usual).size(), usual.size());
  }
}

TEST_P(EveryRoutine, DrawsAFrameOfNegativeSizeAsTheSameRectangleToldTheOtherWay) {
  constexpr CGRect frame{17, 13, 33, 27};
  for (const auto& values : combinationsOf(routine)) {
    const Lines usual = recordingOf([&] { routine.draw(frame, Flags(values)); });
    for (const CGRect negative : {CGRect{50, 13, -33, 27}, CGRect{17, 40, 33, -27}, CGRect{50, 40, -33, -27}})
      EXPECT_EQ(recordingOf([&] { routine.draw(negative, Flags(values)); }), usual) << title(routine, negative, values);
  }
}

TEST_P(EveryImageRoutine, AnImageHasTheDefaultFramesSizeAndDrawsFromZero) {
  const CGSize size = routine.defaultFrame.size;
  const auto image = routine.imageByDefault();
  EXPECT_EQ(image->size(), size);
  EXPECT_EQ(renderingOf(image), recordingOf([&] { routine.draw({{0, 0}, size}, Flags(defaultsOf(routine))); }));
}

TEST_P(EveryImageRoutine, AnImageFreezesItsFlagsAndItsSize) {
  for (const auto& values : combinationsOf(routine)) {
    const auto image = routine.image({33, 44}, Flags(values));
    EXPECT_EQ(image->size(), (CGSize{33, 44}));
    const Lines expected = recordingOf([&] { routine.draw({0, 0, 33, 44}, Flags(values)); });
    EXPECT_EQ(renderingOf(image), expected);
    EXPECT_EQ(renderingOf(image), expected) << "at its second rendering";
  }
}

TEST_P(EveryImageRoutine, AnImageIsANewObjectMadeWithOneAllocation) {
  const Flags flags(defaultsOf(routine));
  const auto first = routine.image({10, 10}, flags);
  const int before = harness::allocations;
  const auto second = routine.image({10, 10}, flags);
  EXPECT_EQ(harness::allocations - before, 1);
  EXPECT_NE(first, second);
}

// At its default frame and at one of another size and place, in every state.
TEST_P(EveryRoutine, DrawsAsTheExpectedFileSays) {
  constexpr CGRect elsewhere{10.25, 20.5, 45, 27};
  Lines lines;
  for (const CGRect frame : {routine.defaultFrame, elsewhere}) {
    for (const auto& values : combinationsOf(routine)) {
      lines.push_back(title(routine, frame, values));
      const Lines drawn = recordingOf([&] { routine.draw(frame, Flags(values)); });
      lines.insert(lines.end(), drawn.begin(), drawn.end());
    }
  }
  harness::expectSameAsFile("uikit/stylekit/expected/" + std::string(routine.name) + ".txt", lines);
}
