#include "tessaluna/platform/accessibility/accessibleTree.h"

#include <cctype>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

bool isAccessibleWindow(const NSWindow& window) {
  return !window.accessibilityIsIgnored() && NSApp && window.accessibilityParent() == NSApp;
}

// Focus.

Ref<NSObject> focusedElementWithin(const AccessibilityElements& elements) {
  for (const Ref<NSObject>& element : elements) {
    if (!attributeOf<bool>(*accessibilityOf(element), NSAccessibilityFocusedAttribute).value_or(false)) continue;
    const Ref<NSObject> inner = focusedElementBelow(element);
    return inner ? inner : element;
  }
  return nullptr;
}

Ref<NSObject> focusedElementBelow(const Ref<NSObject>& element) {
  const auto* items = dynamic_cast<const AccessibleItems*>(element.get());
  if (!items) return focusedElementWithin(accessibleChildrenOf(element));
  const Ref<NSObject> item = items->focusedAccessibleItem();
  return item ? focusedElementWithin({item}) : nullptr;
}

Ref<NSObject> focusedElement() {
  const Ref<NSWindow> window = NSApp ? NSApp->keyWindow() : nullptr;
  if (!window) return nullptr;
  const Ref<NSObject> focused = focusedElementWithin(accessibleChildrenOf(window));
  return focused ? focused : window;
}

// The point.

namespace {

const NSWindow* windowOf(const Ref<NSObject>& element) {
  const Ref<NSView> view = viewOfAccessible(element);
  return view ? view->window() : nullptr;
}

// Whether the element or one below it shows at the point: in the window, or in any other.
bool showsAt(const Ref<NSObject>& element, CGPoint point, const NSWindow* window, bool inOtherWindow) {
  const bool isHere = windowOf(element) == window;
  if (isHere != inOtherWindow && NSPointInRect(point, visibleFrameOfAccessible(element))) return true;
  for (const Ref<NSObject>& child : shownAccessibleChildrenOf(element))
    if (showsAt(child, point, window, inOtherWindow)) return true;
  return false;
}

}  // namespace

Ref<NSObject> elementAtPoint(const AccessibilityElements& elements, CGPoint point) {
  if (elements.empty()) return nullptr;
  const NSWindow* window = windowOf(elements.front());
  for (const bool inOtherWindow : {true, false})
    for (auto element = elements.rbegin(); element != elements.rend(); ++element)
      if (showsAt(*element, point, window, inOtherWindow)) return *element;
  return nullptr;
}

// As text.

namespace {

// "AXTextField" as "text field". A name of another form stays.
std::string wordsOf(std::string_view name) {
  if (!name.starts_with("AX")) return std::string(name);
  std::string words;
  for (const char letter : name.substr(2)) {
    const auto unit = static_cast<unsigned char>(letter);
    if (std::isupper(unit) && !words.empty()) words += ' ';
    words += static_cast<char>(std::tolower(unit));
  }
  return words;
}

// On one line.
std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char unit : text) result += unit == '\n' ? std::string("\\n") : std::string(1, unit);
  return result + "\"";
}

std::string wordsOf(const AccessibleQuantity& quantity) {
  std::string words = numberText(quantity.value);
  if (quantity.minimum && quantity.maximum)
    words += " in " + numberText(*quantity.minimum) + " to " + numberText(*quantity.maximum);
  return words;
}

template <class Range, class Word>
std::string joined(const Range& range, Word word) {
  std::string result;
  for (const auto& one : range) {
    const std::string text = word(one);
    if (!result.empty() && !text.empty()) result += ", ";
    result += text;
  }
  return result;
}

void addLines(const Ref<NSObject>& element, std::size_t depth, std::vector<std::string>& lines) {
  lines.push_back(std::string(2 * depth, ' ') + accessibleLine(element));
  for (const Ref<NSObject>& child : shownAccessibleChildrenOf(element)) addLines(child, depth + 1, lines);
}

}  // namespace

std::string accessibleLine(const Ref<NSObject>& element) {
  const AccessibleDescription shown = describe(element);
  std::string line = wordsOf(shown.role) + " " + quoted(shown.name);
  if (shown.quantity) line += " = " + wordsOf(*shown.quantity);
  else if (isAccessibleTextInput(element) || (!shown.text.empty() && shown.text != shown.name))
    line += " = " + quoted(shown.text);
  if (!shown.help.empty()) line += " help " + quoted(shown.help);
  line += " [" +
          joined(allAccessibleStates,
                 [&](AccessibleState state) {
                   return shown.states.contains(state) ? std::string(wordFor(state)) : std::string();
                 }) +
          "]";
  if (const auto* items = dynamic_cast<const AccessibleItems*>(element.get()))
    line += ' ' + std::to_string(items->accessibleItemCount()) + " rows";
  const std::string actions = joined(shown.actions, [](const std::string& action) { return wordsOf(action); });
  return actions.empty() ? line : line + " " + actions;
}

std::vector<std::string> accessibleTreeLines(const Ref<NSObject>& root) {
  std::vector<std::string> lines;
  if (root) addLines(root, 0, lines);
  return lines;
}

}  // namespace tessaluna::platform
