#include "tessaluna/uikit/trackrow/PlaybackStatusIcon.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/TextsScope.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::recordingOf;
using TessalunaUIKit::PlaybackStatusIcon;
using TessalunaUIKit::TessalunaStyleKit;

namespace {

class PlaybackStatusIconTest : public harness::StillWorld {};

}  // namespace

TEST_F(PlaybackStatusIconTest, DrawsTheMarkOfAnInvertedPolarity) {
  const auto icon = make<PlaybackStatusIcon>(CGRect{0, 0, 32, 32});
  EXPECT_EQ(recordingOf([&] {
              icon->drawRect({0, 0, 32, 32});
            }),
            recordingOf([] { TessalunaStyleKit::drawInvertPolarity(); }));
}

TEST_F(PlaybackStatusIconTest, TheMarkFillsTheRectangleThatIsRedrawnAndNotTheBounds) {
  const auto icon = make<PlaybackStatusIcon>(CGRect{0, 0, 100, 100});
  EXPECT_EQ(recordingOf([&] {
              icon->drawRect({10, 20, 30, 40});
            }),
            recordingOf([] {
              TessalunaStyleKit::drawInvertPolarity({10, 20, 30, 40});
            }));
}

TEST_F(PlaybackStatusIconTest, ItsNameIsInTheUsersLanguage) {
  const auto icon = make<PlaybackStatusIcon>(CGRect{0, 0, 32, 32});
  EXPECT_EQ(icon->accessibilityTitle(), "Inverted polarity");
  const harness::TextsScope german(NSBundle::StringTable{{"Inverted polarity", "Polung getauscht"}});
  EXPECT_EQ(icon->accessibilityTitle(), "Polung getauscht");
}

TEST_F(PlaybackStatusIconTest, IsDecodedFromAnArchive) {
  NSCoder coder(R"({"frame": [1, 2, 30, 40]})");
  const auto icon = make<PlaybackStatusIcon>(coder);
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(icon->frame(), (CGRect{1, 2, 30, 40}));
  EXPECT_FALSE(icon->isFlipped());
  EXPECT_EQ(icon->className(), "TessalunaUIKit.PlaybackStatusIcon");
}

TEST_F(PlaybackStatusIconTest, IsShownInAWindow) {
  const auto icon = make<PlaybackStatusIcon>(CGRect{10, 10, 32, 32});
  const auto window = showWindowWith(icon);
  icon->setNeedsDisplay(true);
  desktop.settle();
  const auto& lines = nativeOf(*window).paints().back().lines;
  const auto mark = recordingOf([] { TessalunaStyleKit::drawInvertPolarity({0, 0, 32, 32}); });
  EXPECT_NE(std::search(lines.begin(), lines.end(), mark.begin(), mark.end()), lines.end());
}
