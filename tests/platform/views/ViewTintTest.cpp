#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/windows/effectiveAppearance.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using tessaluna::backend::Color;
using tessaluna::backend::SystemColor;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class FilledView : public NSView {
 public:
  explicit FilledView(Ref<NSColor> color) : NSView(CGRect{10, 10, 20, 20}), color_(std::move(color)) {}
  void drawRect(CGRect rect) override {
    color_->setFill();
    NSRectFill(rect);
  }

 private:
  Ref<NSColor> color_;
};

// A black view on a desktop that is white on black.
class ViewTint : public harness::StillWorld {
 protected:
  ViewTint() {
    desktop.setSystemColor(SystemColor::ControlText, {1, 1, 1, 1});
    desktop.setSystemColor(SystemColor::WindowBackground, {0, 0, 0, 1});
    window = showWindowWith(view);
  }
  ~ViewTint() override { setNeutralsFollowPalette(false); }

  // The lines of the next display.
  harness::Lines redraw() {
    view->setNeedsDisplay(true);
    return nextLines();
  }
  harness::Lines nextLines() {
    desktop.settle();
    harness::Lines lines;
    for (const auto& paint : nativeOf(*window).paints()) lines.insert(lines.end(), paint.lines.begin(), paint.lines.end());
    nativeOf(*window).forgetPaints();
    return harness::only("setFillColor", lines);
  }

  static harness::Lines fillOf(const Color& color) {
    return harness::only("setFillColor",
                         harness::recordingOf([&] { NSGraphicsContext::currentCgContext().setFillColor(color); }));
  }

  Ref<FilledView> view = make<FilledView>(NSColor::blackColor());
  Ref<NSWindow> window;
};

}  // namespace

TEST_F(ViewTint, WithoutATintAndWithTheSwitchOffColorsAreWhatTheyAre) {
  EXPECT_THAT(redraw(), Contains(HasSubstr("blackColor")));
}

TEST_F(ViewTint, ATintIsWhatBlackBecomesInTheViewAndBelowIt) {
  const auto inner = make<FilledView>(NSColor::colorWithCalibratedWhite(0, 0.5));
  inner->setFrame({2, 2, 4, 4});
  view->addSubview(inner);
  nextLines();
  view->setTintColor(NSColor::colorWithSRGBRed(0, 0.5, 0, 1));
  const harness::Lines lines = nextLines();
  EXPECT_THAT(lines, Contains(fillOf({0, 0.5, 0, 1}).front()));
  EXPECT_THAT(lines, Contains(fillOf({0, 0.5, 0, 0.5}).front()));
  EXPECT_THAT(lines, Not(Contains(HasSubstr("blackColor"))));
}

TEST_F(ViewTint, ASystemColorAsATintIsThatOfTheMoment) {
  view->setTintColor(NSColor::controlTextColor());
  EXPECT_THAT(redraw(), Contains(fillOf({1, 1, 1, 1}).front()));
  desktop.setSystemColor(SystemColor::ControlText, {0.5, 0.5, 0, 1});
  effectiveAppearanceDidChange();
  EXPECT_THAT(nextLines(), Contains(fillOf({0.5, 0.5, 0, 1}).front()));
}

TEST_F(ViewTint, ItsGroundIsWhatWhiteBecomes) {
  const auto inner = make<FilledView>(NSColor::whiteColor());
  inner->setFrame({2, 2, 4, 4});
  view->addSubview(inner);
  view->setTintColor(NSColor::windowBackgroundColor());
  view->setTintGroundColor(NSColor::controlTextColor());
  const harness::Lines lines = redraw();
  EXPECT_THAT(lines, Contains(fillOf({0, 0, 0, 1}).front()));
  EXPECT_THAT(lines, Contains(fillOf({1, 1, 1, 1}).front()));
}

TEST_F(ViewTint, EndsWithTheView) {
  const auto beside = make<FilledView>(NSColor::blackColor());
  beside->setFrame({100, 10, 20, 20});
  window->contentView()->addSubview(beside);
  view->setTintColor(NSColor::redColor());
  EXPECT_THAT(nextLines(), Contains(HasSubstr("blackColor")));
}

TEST_F(ViewTint, IsReadFromAnInterfaceFile) {
  NSCoder coder(R"({"frame": [1, 2, 3, 4]})");
  EXPECT_EQ(make<NSView>(coder)->tintColor(), nullptr);
  const NSCoder values(R"({"tintColor": "controlTextColor"})");
  const Property* property = findMember(&NSView::staticClassInfo, &ClassInfo::properties, &Property::name, "tintColor");
  ASSERT_NE(property, nullptr);
  ASSERT_TRUE(property->set(*view, values));
  EXPECT_EQ(view->tintColor(), NSColor::controlTextColor());
}

TEST_F(ViewTint, TheSwitchMapsAllThatAWindowDraws) {
  setNeutralsFollowPalette(true);
  EXPECT_THAT(redraw(), Contains(fillOf({1, 1, 1, 1}).front()));
  EXPECT_THAT(redraw(), Not(Contains(HasSubstr("blackColor"))));
}

TEST_F(ViewTint, ATintCountsWithinTheSwitch) {
  setNeutralsFollowPalette(true);
  view->setTintColor(NSColor::blackColor());
  EXPECT_THAT(redraw(), Contains(fillOf({0, 0, 0, 1}).front()));
}

TEST_F(ViewTint, SystemColorsAreNotMappedBesideTheSwitch) {
  view->removeFromSuperview();
  view = make<FilledView>(NSColor::controlTextColor()->colorWithAlphaComponent(0.5));
  window->contentView()->addSubview(view);
  setNeutralsFollowPalette(true);
  EXPECT_THAT(redraw(), Contains(fillOf({1, 1, 1, 0.5}).front()));
}
