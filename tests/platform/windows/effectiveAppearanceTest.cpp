#include "tessaluna/platform/windows/effectiveAppearance.h"

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace {

using EffectiveAppearance = harness::StillWorld;

class Counting : public NSView {
 public:
  using NSView::NSView;
  int layouts = 0;
  void layout() override {
    NSView::layout();
    ++layouts;
  }
};

}  // namespace

TEST_F(EffectiveAppearance, AChangeLaysOutAllViewsAndRedrawsTheirWindow) {
  const auto outer = make<Counting>(CGRect{10, 10, 100, 100}), inner = make<Counting>(CGRect{0, 0, 20, 20});
  outer->addSubview(inner);
  const auto window = showWindowWith(outer);
  outer->layouts = inner->layouts = 0;
  effectiveAppearanceDidChange();
  desktop.settle();
  EXPECT_EQ(outer->layouts, 1);
  EXPECT_EQ(inner->layouts, 1);
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_EQ(nativeOf(*window).paints()[0].dirty, (std::vector<CGRect>{{0, 0, 200, 150}}));
}

TEST_F(EffectiveAppearance, AViewThatWasInNoWindowIsLaidOutWhenItComesIntoOne) {
  const auto place = make<NSView>(CGRect{10, 10, 100, 100});
  const auto outer = make<Counting>(CGRect{0, 0, 50, 50}), inner = make<Counting>(CGRect{0, 0, 20, 20});
  outer->addSubview(inner);
  place->addSubview(outer);
  const auto window = showWindowWith(place);
  outer->removeFromSuperview();
  effectiveAppearanceDidChange();
  desktop.settle();
  outer->layouts = inner->layouts = 0;
  place->addSubview(outer);
  desktop.settle();
  EXPECT_EQ(outer->layouts, 1);
  EXPECT_EQ(inner->layouts, 1);
  outer->removeFromSuperview();
  place->addSubview(outer);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
}

TEST_F(EffectiveAppearance, AChangeIsPostedAlsoWithoutAnApplication) {
  NSApp.reset();
  int posted = 0;
  const auto token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSSystemColorsDidChangeNotification, nullptr, nullptr, [&](const Ref<NSNotification>&) { ++posted; });
  effectiveAppearanceDidChange();
  NSNotificationCenter::defaultCenter().removeObserver(token);
  effectiveAppearanceDidChange();
  EXPECT_EQ(posted, 1);
}

TEST_F(EffectiveAppearance, AViewThatIsAsLargeAsItsContentsFollowsAFontOfTheDesktop) {
  struct Growing : NSView {
    using NSView::NSView;
    CGFloat width = 30;
    CGSize intrinsicContentSize() const override { return {width, 10}; }
  };
  const auto growing = make<Growing>(NSZeroRect);
  growing->setTranslatesAutoresizingMaskIntoConstraints(false);
  const auto window = showWindowWith(growing);
  NSLayoutConstraint::constraintWithItem(growing, NSLayoutAttributeLeft, NSLayoutRelationEqual, window->contentView(),
                                         NSLayoutAttributeLeft, 1, 10)
      ->setActive(true);
  desktop.settle();
  ASSERT_EQ(growing->frame().size.width, 30);
  growing->width = 50;
  effectiveAppearanceDidChange();
  desktop.settle();
  EXPECT_EQ(growing->frame().size.width, 50);
}

TEST_F(EffectiveAppearance, AWindowWithoutAContentViewIsPassedOver) {
  const auto empty = showWindow(), window = showWindow();
  empty->setContentView(nullptr);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  effectiveAppearanceDidChange();
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}
