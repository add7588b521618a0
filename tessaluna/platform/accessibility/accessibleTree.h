// The tree of elements as a whole: who has the keyboard, who is under a point, and how it reads.
#pragma once

#include <string>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"

namespace tessaluna::platform {

class NSWindow;

// Whether a window is an element below the application, as one that hangs under an element of another window is not.
bool isAccessibleWindow(const NSWindow& window);

// The innermost one that has the keyboard, among the elements and those below them; null if none has.
Ref<NSObject> focusedElementWithin(const AccessibilityElements& elements);
Ref<NSObject> focusedElementBelow(const Ref<NSObject>& element);  // among those in the element
// The one that has it in the application: an element of the key window, or the window itself. Null without a key window.
Ref<NSObject> focusedElement();

// The one of the elements, the children of one parent, that shows at the point of the screen, or has an element that does:
// a pop-up lies outside of its field. One in a window of its own goes before the others, then the last. Null if none.
Ref<NSObject> elementAtPoint(const AccessibilityElements& elements, CGPoint point);

// A line for each element from this one on, two blanks further in than the one it is in:
//
//   text field "Search" = "abba" help "Title or artist" [focusable, focused, editable] focus
//     list "" []
//       row "Abba, Waterloo" [selectable, selected] press, choose
//
// A value that is the name is left out. Of many items those that show have lines, and their number is in the line above.
std::vector<std::string> accessibleTreeLines(const Ref<NSObject>& root);
std::string accessibleLine(const Ref<NSObject>& element);

}  // namespace tessaluna::platform
