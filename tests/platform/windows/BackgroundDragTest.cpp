#include "tessaluna/platform/windows/BackgroundDrag.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

using Calls = std::vector<std::string>;

struct BackgroundDragTest : harness::StillWorld {
  Ref<NSWindow> window = make<NSWindow>(CGRect{100, 100, 200, 150}, NSWindowStyleMaskTexturedBackground,
                                        NSBackingStoreBuffered, /*defer=*/false);
  BackgroundDragTest() { window->orderFront(nullptr); }

  CGPoint originAfterADragOn(const Ref<NSView>& view) {
    window->setFrame({100, 100, 200, 150}, false);
    view->setFrame({0, 0, 50, 50});
    window->contentView()->addSubview(view);
    user.press(*window, {20, 20});
    user.dragTo({30, 45});
    user.release();
    view->removeFromSuperview();
    return window->frame().origin;
  }
};

constexpr CGPoint moved{110, 125}, inPlace{100, 100};

TEST_F(BackgroundDragTest, MovesAWindowWithATexturedBackgroundAfterThePointer) {
  EXPECT_TRUE(window->isMovableByWindowBackground());
  user.press(*window, {20, 20});
  user.dragTo({30, 45});
  EXPECT_EQ(window->frame(), (CGRect{110, 125, 200, 150}));
  EXPECT_EQ(nativeOf(*window).frame(), window->frame());
  user.dragTo({10, 20});  // from where the window is now
  EXPECT_EQ(window->frame().origin, (CGPoint{100, 125}));
  user.release();
  user.moveTo(*window, {60, 60});
  EXPECT_EQ(window->frame().origin, (CGPoint{100, 125}));
}

TEST_F(BackgroundDragTest, MovesNoOtherWindowUnlessItIsToldTo) {
  const auto plain = showWindow();
  EXPECT_FALSE(plain->isMovableByWindowBackground());
  user.press(*plain, {20, 20});
  user.dragTo({30, 45});
  user.release();
  EXPECT_EQ(plain->frame().origin, inPlace);
  plain->setMovableByWindowBackground(true);
  user.press(*plain, {20, 20});
  user.dragTo({30, 45});
  user.release();
  EXPECT_EQ(plain->frame().origin, moved);
}

TEST_F(BackgroundDragTest, TheViewUnderThePressDecides) {
  EXPECT_EQ(originAfterADragOn(make<NSView>(CGRect{})), moved);
  EXPECT_EQ(originAfterADragOn(make<NSImageView>(CGRect{})), moved);
  EXPECT_EQ(originAfterADragOn(NSTextField::labelWithString("label")), moved);
  EXPECT_EQ(originAfterADragOn(make<NSTextField>(CGRect{})), inPlace);
  EXPECT_EQ(originAfterADragOn(make<NSButton>(CGRect{})), inPlace);
  const auto opaque = make<harness::ProbeView>(CGRect{});
  opaque->opaque = true;
  EXPECT_EQ(originAfterADragOn(opaque), inPlace);
}

TEST_F(BackgroundDragTest, WithoutAnyViewMovesTheWindow) {
  window->setContentView(nullptr);
  user.press(*window, {20, 20});
  user.dragTo({30, 45});
  EXPECT_EQ(window->frame().origin, moved);
}

TEST_F(BackgroundDragTest, AClickByAHandThatIsNotStillIsAClick) {
  const auto view = make<harness::ProbeView>(CGRect{0, 0, 50, 50});
  window->contentView()->addSubview(view);
  view->calls.clear();
  user.press(*window, {20, 20});
  user.dragTo({22, 21});
  user.release();
  EXPECT_EQ(view->calls, (Calls{"mouseDown", "mouseDragged", "mouseUp"}));
  EXPECT_EQ(window->frame().origin, inPlace);
}

TEST_F(BackgroundDragTest, EndsThePressOfTheViewWhereItBegan) {
  const auto view = make<harness::ProbeView>(CGRect{0, 0, 50, 50});
  window->contentView()->addSubview(view);
  view->calls.clear();
  user.press(*window, {20, 20});
  user.dragTo({30, 45});
  user.dragTo({35, 45});
  user.release();
  EXPECT_EQ(view->calls, (Calls{"mouseDown", "mouseExited", "mouseUp"}));
  EXPECT_FALSE(NSPointInRect(view->events.back()->locationInWindow(), view->bounds()));
}

TEST_F(BackgroundDragTest, OtherButtonsMoveNothing) {
  user.press(*window, {20, 20}, {.button = 1});
  user.dragTo({30, 45});
  EXPECT_EQ(window->frame().origin, inPlace);
}

}  // namespace
}  // namespace tessaluna::platform
