#include "tests/fuzz/gestures/checks.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <vector>

#include "tessaluna/backends/headless/HeadlessWindow.h"
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/KeyboardWhileHidden.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindow.h"
#include "tessaluna/uikit/trackrow/TrackRowControl.h"

namespace fuzz {

using namespace tessaluna::platform;
using tessaluna::backend::headless::HeadlessBackend;
using tessaluna::backend::headless::HeadlessWindow;
using tessaluna::backend::raster::Bitmap;

namespace {

template <class Visit>
void visitViews(const Ref<NSView>& view, const Visit& visit) {
  if (!view) return;
  visit(*view);
  for (const Ref<NSView>& subview : view->subviews()) visitViews(subview, visit);
}

std::string textOf(CGRect rect) {
  std::string text;
  for (const CGFloat number : {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height})
    text += (text.empty() ? "" : ", ") + std::to_string(number);
  return "(" + text + ")";
}

// The view and those above it.
std::string placeOf(const NSView* view) {
  std::string text;
  for (; view; view = view->superview()) text += (text.empty() ? "" : " in ") + view->className() + textOf(view->frame());
  return text;
}

// The innermost view that shows at the point of base space.
const NSView* shownAt(const Ref<NSView>& content, CGPoint point) {
  const NSView* found = nullptr;
  visitViews(content, [&](const NSView& view) {
    if (!view.isHiddenOrHasHiddenAncestor() && NSPointInRect(point, view.convertRectToView(view.visibleRect(), nullptr)))
      found = &view;
  });
  return found;
}

std::string pixelText(std::uint32_t kept, std::uint32_t drawn) {
  char text[64];
  std::snprintf(text, sizeof text, "kept %08x, drawn %08x", kept, drawn);
  return text;
}

// A shape that is cut where the redraw ends may be rounded in another way.
bool areAlike(std::uint32_t a, std::uint32_t b) {
  constexpr int rounding = 2;
  for (int shift = 0; shift < 32; shift += 8)
    if (std::abs(static_cast<int>(a >> shift & 0xff) - static_cast<int>(b >> shift & 0xff)) > rounding) return false;
  return true;
}

std::string faultOfPicture(NSWindow& window, const std::vector<std::uint32_t>& kept, const Bitmap& drawn, double scale) {
  std::string first;  // "kept ffffffff, drawn ff000000"
  int count = 0, left = drawn.width(), top = drawn.height(), right = 0, bottom = 0;
  for (int y = 0; y < drawn.height(); ++y)
    for (int x = 0; x < drawn.width(); ++x) {
      const std::uint32_t before = kept[static_cast<std::size_t>(y * drawn.width() + x)], now = drawn.pixel(x, y);
      if (areAlike(before, now)) continue;
      if (count++ == 0) first = pixelText(before, now);
      left = std::min(left, x), right = std::max(right, x + 1);
      top = std::min(top, y), bottom = std::max(bottom, y + 1);
    }
  if (count == 0) return {};
  const CGRect rect{left / scale, (drawn.height() - bottom) / scale, (right - left) / scale, (bottom - top) / scale};
  return std::to_string(count) + " pixels of " + window.className() + " were not drawn again (" + first + "), in " +
         textOf(rect) + " of " + placeOf(shownAt(window.contentView(), {CGRectGetMidX(rect), CGRectGetMidY(rect)}));
}

// A window's kept picture is what a redraw of everything gives.
std::string faultOfRedraw(NSWindow& window) {
  const HeadlessWindow& native = HeadlessWindow::of(window);
  if (!native.isVisible() || !native.picture() || !window.contentView()) return {};
  std::vector<std::uint32_t> kept;
  for (int y = 0; y < native.picture()->height(); ++y) {
    const std::uint32_t* row = native.picture()->row(y);
    kept.insert(kept.end(), row, row + native.picture()->width());
  }
  window.contentView()->setNeedsDisplay(true);
  window.displayIfNeeded();
  return faultOfPicture(window, kept, *native.picture(), native.scale());
}

std::string faultOfLayout(NSWindow& window) {
  std::map<const NSView*, CGRect> frames;
  visitViews(window.contentView(), [&](NSView& view) { frames[&view] = view.frame(); });
  visitViews(window.contentView(), [&](NSView& view) { view.setNeedsLayout(true); });
  window.layoutIfNeeded();
  std::string fault;
  visitViews(window.contentView(), [&](NSView& view) {
    const auto found = frames.find(&view);
    const auto differs = [&] {
      const CGRect a = found->second, b = view.frame();
      constexpr CGFloat epsilon = 1e-6;
      return std::abs(a.origin.x - b.origin.x) + std::abs(a.origin.y - b.origin.y) + std::abs(a.size.width - b.size.width) +
                 std::abs(a.size.height - b.size.height) >
             epsilon;
    };
    if (found == frames.end()) fault = "a second layout made " + placeOf(&view);
    else if (differs()) fault = "a second layout moved " + placeOf(&view) + " from " + textOf(found->second);
  });
  return fault;
}

std::string faultOfKeyboard(NSWindow& window) {
  if (window.firstResponder() == &window) return {};
  const auto* view = dynamic_cast<const NSView*>(window.firstResponder());
  if (!view) return {};
  if (view->window() != &window) return "the keyboard is in a view that is not in its window: " + placeOf(view);
  if (isHiddenFromKeyboard(*view)) return "the keyboard is in a hidden view: " + placeOf(view);
  return {};
}

// The field editor is in the field that it edits, and nowhere else.
std::string faultOfEditor(NSWindow& window) {
  const Ref<NSText> editor = window.fieldEditor(false, nullptr);
  if (!editor) return {};
  const auto* field = dynamic_cast<const NSView*>(editor->delegate().get());
  if (!field) return editor->window() ? "a field editor without a field in " + placeOf(editor.get()) : std::string();
  if (!editor->isDescendantOf(field)) return "the field editor is not in its field but in " + placeOf(editor.get());
  if (window.firstResponder() != editor.get()) return "a field is edited without the keyboard: " + placeOf(field);
  return {};
}

std::string faultOfChild(NSWindow& window) {
  if (const NSWindow* parent = window.parentWindow(); parent && !parent->isVisible())
    return window.className() + " shows without the window that it belongs to";
  if (const auto* popUp = dynamic_cast<TessalunaUIKit::SuggestionsWindow*>(&window)) {
    const Ref<NSView> field = viewOfAccessible(popUp->accessibilityParent());
    if (!field || !field->window() || field->isHiddenOrHasHiddenAncestor()) return "a pop-up without its field";
  }
  return {};
}

bool isFinite(CGRect rect) {
  return std::isfinite(rect.origin.x + rect.origin.y + rect.size.width + rect.size.height) && rect.size.width >= 0 &&
         rect.size.height >= 0;
}

std::string faultOfElement(const Ref<NSObject>& element, std::set<const NSObject*>& known) {
  if (!known.insert(element.get()).second) return "an element twice: " + accessibleLine(element);
  if (!isFinite(accessibleFrameOf(element))) return "an element nowhere: " + accessibleLine(element);
  for (const Ref<NSObject>& child : shownAccessibleChildrenOf(element)) {
    if (!child) return "no element among the children of " + accessibleLine(element);
    if (accessibleParentOf(child) != element)
      return "a child of another parent: " + accessibleLine(child) + " in " + accessibleLine(element);
    if (std::string fault = faultOfElement(child, known); !fault.empty()) return fault;
  }
  return {};
}

std::string faultOfElements() {
  std::set<const NSObject*> known;
  if (std::string fault = faultOfElement(NSApp, known); !fault.empty()) return fault;
  // A row that is scrolled out of sight is an element as well.
  const Ref<NSObject> focused = focusedElement();
  for (Ref<NSObject> above = focused; above; above = accessibleParentOf(above))
    if (known.contains(above.get())) return {};
  return focused ? "the focus is outside of the tree: " + accessibleLine(focused) : std::string();
}

}  // namespace

std::string faultOf(HeadlessBackend& desktop) {
  constexpr int maxRounds = 20;
  const auto isDisplayDue = [&] {
    return std::any_of(desktop.windows().begin(), desktop.windows().end(),
                       [](const HeadlessWindow* window) { return window->isVisible() && window->isDisplayScheduled(); });
  };
  desktop.settle();
  for (int round = 0; isDisplayDue(); ++round) {
    if (round == maxRounds) return "a redraw without end";
    desktop.settle();
  }
  for (const Ref<NSWindow>& window : NSApp->windows()) {
    for (const auto& check : {faultOfKeyboard, faultOfEditor})
      if (std::string fault = check(*window); !fault.empty()) return fault;
    if (!window->isVisible()) continue;
    for (const auto& check : {faultOfRedraw, faultOfLayout, faultOfChild})
      if (std::string fault = check(*window); !fault.empty()) return fault;
  }
  return faultOfElements();
}

std::string faultAtRest() {
  std::string fault;
  for (const Ref<NSWindow>& window : NSApp->windows())
    visitViews(window->contentView(), [&](NSView& view) {
      const auto* button = dynamic_cast<const NSButton*>(&view);
      const auto* control = dynamic_cast<const TessalunaUIKit::TrackRowControl*>(&view);
      const auto* links = dynamic_cast<const TessalunaUIKit::MultipleLinksTextField*>(&view);
      if ((button && button->isHighlighted()) || (control && control->isPressed()) || (links && links->isPressed()))
        fault = "still pressed: " + placeOf(&view);
    });
  return fault;
}

}  // namespace fuzz
