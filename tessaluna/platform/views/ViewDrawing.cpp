#include "tessaluna/platform/views/ViewDrawing.h"

#include <optional>
#include <utility>

#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/PaletteCanvas.h"
#include "tessaluna/platform/views/KeyboardWhileHidden.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/DirtyRegion.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/keyViews.h"

namespace tessaluna::platform {

ViewDrawing::ViewDrawing(NSCoder& coder) : ViewConstraints(coder) {
  isHidden_ = coder.decodeBoolForKey("hidden");
  wantsLayer_ = coder.decodeBoolForKey("wantsLayer");
}

void ViewDrawing::setNeedsDisplay(bool needsDisplay) {
  needsDisplay_ = needsWholeDisplay_ = needsDisplay;
  if (needsDisplay) setNeedsDisplayInRect(bounds());
}

void ViewDrawing::setNeedsDisplayInRect(CGRect rect) {
  needsDisplay_ = true;
  if (!window() || isHiddenOrHasHiddenAncestor()) return;
  // By the frames as they are: those that a pass changes ask for redraws of their own.
  const CGRect visible = NSIntersectionRect(rect, visibleRectNow());
  if (!NSIsEmptyRect(visible)) window()->invalidateRect(transformToWindow().applyToRect(visible));
}

namespace {

// Whether the keyboard is in the view and leaves it with the hiding of this one.
bool losesKeyboard(const NSView& view) {
  const auto* first = view.window() ? dynamic_cast<const NSView*>(view.window()->firstResponder()) : nullptr;
  return first && first->isDescendantOf(&view) && !isKeyboardKeptIn(view);
}

void passKeyboardOn(NSView& hidden) {
  const Ref<NSWindow> window = hidden.window() ? refTo(*hidden.window()) : nullptr;
  // A field has ended its editing by now; whoever was notified may have given the keys to another view, or shown this one
  // again.
  const auto* first = window ? dynamic_cast<const NSView*>(window->firstResponder()) : nullptr;
  if (!window || !hidden.isHidden() || (first && !first->isDescendantOf(&hidden))) return;
  for (const Ref<NSView>& next : keyViewsAfter(hidden))
    if (window->makeFirstResponder(next.get())) return;
  window->makeFirstResponder(nullptr);
}

}  // namespace

void ViewDrawing::setHidden(bool isHidden) {
  if (isHidden == isHidden_) return;
  const Ref<NSObject> held = asView().weak_from_this().lock();  // absent while the view is being made
  const bool hadKeyboard = isHidden && losesKeyboard(asView());
  // What is under it shows in one case and is covered in the other: both redraw the same area, while it counts as visible.
  if (isHidden) setNeedsDisplay(true);
  isHidden_ = isHidden;
  if (!isHidden) setNeedsDisplay(true);
  const bool wasHiddenBefore = superview() && superview()->isHiddenOrHasHiddenAncestor();
  if (isHidden && !wasHiddenBefore) callViewDidHide(asView());
  if (hadKeyboard) passKeyboardOn(asView());
}

void ViewDrawing::callViewDidHide(NSView& view) {
  const Ref<NSObject> held = view.weak_from_this().lock();  // absent while the view is being made
  const std::vector<Ref<NSView>> copy = view.subviews();
  view.viewDidHide();
  for (const Ref<NSView>& subview : copy)
    if (!subview->isHidden()) callViewDidHide(*subview);
}

bool ViewDrawing::isHiddenOrHasHiddenAncestor() const {
  for (const NSView* view = &asView(); view; view = view->superview())
    if (view->isHidden()) return true;
  return false;
}

void ViewDrawing::setTintColor(Ref<NSColor> color) {
  tintColor_ = std::move(color);
  setNeedsDisplay(true);
}

void ViewDrawing::setTintGroundColor(Ref<NSColor> color) {
  tintGroundColor_ = std::move(color);
  setNeedsDisplay(true);
}

void ViewDrawing::geometryWillChange() {
  if (window()) setNeedsDisplay(true);
}

void ViewDrawing::geometryDidChange() { setNeedsDisplay(true); }

namespace {

// Whether the part is the whole but for rounding on the way through the superviews' spaces.
bool isAllOf(CGRect part, CGRect whole) {
  constexpr CGFloat epsilon = 1e-6;
  return NSContainsRect(NSInsetRect(part, -epsilon, -epsilon), whole);
}

// A context above the given one in which black is the tint.
class TintedContext {
 public:
  TintedContext(const NSColor& tint, const NSColor& ground, NSGraphicsContext& context)
      : state_(context.CGContext()),
        canvas_(context.CGContext().canvas(), {tint.components(), ground.components()}),
        context_(canvas_),
        graphics_(NSGraphicsContext::graphicsContextWithCGContext(context_, context.isFlipped())),
        current_(graphics_) {}

  NSGraphicsContext& graphics() const { return *graphics_; }

 private:
  GraphicsStateScope state_;
  PaletteCanvas canvas_;
  CGContext context_;
  Ref<NSGraphicsContext> graphics_;
  CurrentContextScope current_;
};

// The device pixels that the part of the view touches, in the view's coordinates.
CGRect touchedPixels(CGRect part, const NSView& view) {
  if (!view.window()) return part;
  const CGAffineTransform toWindow = view.transformToWindow();
  const CGRect pixels = roundedOutward(toWindow.applyToRect(part), view.window()->backingScaleFactor());
  return toWindow.inverted()->applyToRect(pixels);
}

}  // namespace

void ViewDrawing::displayRectInContext(CGRect rect, NSGraphicsContext& outer) {
  if (isHidden_) return;
  // A window's tree is laid out before it is opened for drawing.
  if (!superview() && !window()) layoutSubtreeIfNeeded();
  const CGAffineTransform toSuperview = transformToSuperview();
  const CGRect shown = NSIntersectionRect(toSuperview.inverted()->applyToRect(rect), bounds());
  if (NSIsEmptyRect(shown)) return;

  // What a view draws goes to the current context.
  std::optional<CurrentContextScope> current;
  if (NSGraphicsContext::currentContext().get() != &outer) current.emplace(refTo(outer));
  std::optional<TintedContext> tinted;
  if (tintColor_)
    tinted.emplace(*tintColor_, tintGroundColor_ ? *tintGroundColor_ : *NSColor::windowBackgroundColor(), outer);
  NSGraphicsContext& context = tinted ? tinted->graphics() : outer;
  const Ref<NSView> held = refTo(asView());
  const bool wasDrawing = std::exchange(isDrawing_, true);
  const AtEndOfScope end([&] { isDrawing_ = wasDrawing; });
  const GraphicsStateScope state(context.CGContext());
  context.CGContext().concat(toSuperview);
  context.CGContext().clipRect(bounds());

  // Drawing starts at the frontmost subview that covers all of the rectangle, if there is one. What is below shows through a
  // pixel that an edge cuts, of this view or of one above it.
  const std::vector<Ref<NSView>> copy = subviews();
  std::size_t first = copy.size();
  while (first > 0) {
    const NSView& view = *copy[first - 1];
    const bool covers = view.isOpaque() && !view.isHidden() && NSContainsRect(view.frame(), shown);
    if (covers && isAllOf(shown, touchedPixels(shown, asView()))) break;
    --first;
  }
  // The wish ends before it is granted: one that drawRect: makes is a new one.
  needsDisplay_ = false;
  const bool isWhole = std::exchange(needsWholeDisplay_, false) || isAllOf(shown, bounds());
  if (first == 0) {
    const GraphicsStateScope own(context.CGContext());
    context.setFlipped(asView().isFlipped());
    // A pixel that an edge cuts is drawn as a whole, and clipped.
    drawRect(isWhole ? bounds() : NSIntersectionRect(touchedPixels(shown, asView()), bounds()));
  }
  for (std::size_t i = first == 0 ? 0 : first - 1; i < copy.size(); ++i) copy[i]->displayRectInContext(shown, context);
}

}  // namespace tessaluna::platform
