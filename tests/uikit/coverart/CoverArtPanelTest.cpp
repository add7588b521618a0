#include "tessaluna/uikit/coverart/CoverArtPanel.h"

#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

struct CoverArtPanelTest : harness::StillWorld {
  Ref<CoverArtPanel> panel = make<CoverArtPanel>(CGRect{10, 20, 30, 40}, 0x100u, NSBackingStoreBuffered, false);
};

TEST_F(CoverArtPanelTest, TakesTheKeyStatusWithoutATitleBar) {
  EXPECT_TRUE(panel->canBecomeKeyWindow());
  panel->makeKeyAndOrderFront(nullptr);
  EXPECT_TRUE(panel->isKeyWindow());
  EXPECT_EQ(desktop.keyWindow(), &nativeOf(*panel));
}

TEST_F(CoverArtPanelTest, PassesOnHowItIsMade) {
  EXPECT_EQ(panel->frame(), (CGRect{10, 20, 30, 40}));
  EXPECT_EQ(panel->styleMask(), 0x100u);
  ASSERT_NE(panel->nativeWindow(), nullptr) << "not deferred";
  EXPECT_TRUE(nativeOf(*panel).options().isPanel);
  EXPECT_EQ(nativeOf(*panel).options().kind, tessaluna::backend::WindowKind::Borderless);
  EXPECT_TRUE(panel->hasShadow());
}

}  // namespace
}  // namespace TessalunaUIKit
