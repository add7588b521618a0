#include "tessaluna/platform/views/GlyphButton.h"

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace {

using GlyphButtonTest = harness::StillWorld;

}  // namespace

TEST_F(GlyphButtonTest, IsAsLargeInALayoutAsItWasMadeWhateverItsFrameBecomes) {
  const auto button = make<GlyphButton>(CGRect{5, 5, 16, 20});
  EXPECT_EQ(button->fittingSize(), (CGSize{16, 20}));
  button->setFrame({0, 0, 300, 20});
  EXPECT_EQ(button->fittingSize(), (CGSize{16, 20}));
}

TEST_F(GlyphButtonTest, FromAnArchiveItHasTheSizeOfItsFrameThere) {
  NSCoder coder(R"({"frame": [1, 2, 20, 18]})");
  EXPECT_EQ(make<GlyphButton>(coder)->intrinsicContentSize(), (CGSize{20, 18}));
}

TEST_F(GlyphButtonTest, MadeWithoutASizeItHasThatOfAStockButton) {
  EXPECT_EQ(make<GlyphButton>(NSZeroRect)->intrinsicContentSize(), make<NSButton>(NSZeroRect)->intrinsicContentSize());
}
