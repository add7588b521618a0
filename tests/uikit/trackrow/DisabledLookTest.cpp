#include "tessaluna/uikit/trackrow/DisabledLook.h"

#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/CloseButton.h"
#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"
#include "tessaluna/uikit/trackrow/TrackRowMoreButton.h"
#include "tessaluna/uikit/trackrow/TrackRowPlayButton.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using harness::Lines;
using harness::recordingOf;

namespace {

constexpr CGRect bounds{0, 0, 15, 15};

template <class Control>
Ref<NSView> hovered() {
  const auto control = make<Control>(bounds);
  if constexpr (std::is_base_of_v<TrackRowControl, Control>) control->setHasMouseOnRow(true);
  return control;
}

struct GlyphControl {
  const char* name;
  Ref<NSView> (*make)();
};

class DisabledLookTest : public harness::StillWorld, public testing::WithParamInterface<GlyphControl> {
 protected:
  DisabledLookTest() { host->addSubview(control); }
  Lines drawn() const {
    return recordingOf([this] { control->drawRect(bounds); });
  }
  Ref<NSView> host = make<harness::ProbeView>(CGRect{0, 0, 100, 100});
  Ref<NSView> control = GetParam().make();
};

}  // namespace

TEST_P(DisabledLookTest, TheGlyphIsPaleInOneLayerWhileAHostDisablesAllControls) {
  const Lines enabled = drawn();
  host->setEnablesControls(false);
  const Lines pale = recordingOf([&] {
    CGContext& context = NSGraphicsContext::currentCgContext();
    context.saveState();
    context.setAlpha(DisabledLook::alpha);
    context.beginTransparencyLayer();
    {
      host->setEnablesControls(true);
      control->drawRect(bounds);
      host->setEnablesControls(false);
    }
    context.endTransparencyLayer();
    context.restoreState();
  });
  EXPECT_EQ(drawn(), pale);
  EXPECT_GT(pale.size(), enabled.size());
  host->setEnablesControls(true);
  EXPECT_EQ(drawn(), enabled);
}

INSTANTIATE_TEST_SUITE_P(OfEachGlyphControl, DisabledLookTest,
                         testing::Values(GlyphControl{"CloseButton", hovered<CloseButton>},
                                         GlyphControl{"TrackRowPlayButton", hovered<TrackRowPlayButton>},
                                         GlyphControl{"TrackRowFavoriteButton", hovered<TrackRowFavoriteButton>},
                                         GlyphControl{"TrackRowMoreButton", hovered<TrackRowMoreButton>}),
                         [](const auto& info) { return std::string(info.param.name); });
