// The names that assistive clients and elements share: attributes, roles, values, actions and notifications.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

inline constexpr std::string_view NSAccessibilityRoleAttribute = "AXRole";
inline constexpr std::string_view NSAccessibilityTitleAttribute = "AXTitle";
inline constexpr std::string_view NSAccessibilityDescriptionAttribute = "AXDescription";  // the label
inline constexpr std::string_view NSAccessibilityHelpAttribute = "AXHelp";
inline constexpr std::string_view NSAccessibilityValueAttribute = "AXValue";
inline constexpr std::string_view NSAccessibilityPlaceholderValueAttribute = "AXPlaceholderValue";
inline constexpr std::string_view NSAccessibilitySelectedTextAttribute = "AXSelectedText";
inline constexpr std::string_view NSAccessibilitySelectedTextRangeAttribute = "AXSelectedTextRange";
inline constexpr std::string_view NSAccessibilityNumberOfCharactersAttribute = "AXNumberOfCharacters";
inline constexpr std::string_view NSAccessibilityInsertionPointLineNumberAttribute = "AXInsertionPointLineNumber";
// Where the caret is, which may be at either end of the selected range. A name of our own.
inline constexpr std::string_view accessibilityInsertionPointAttribute = "AXInsertionPoint";
inline constexpr std::string_view NSAccessibilityMinValueAttribute = "AXMinValue";
inline constexpr std::string_view NSAccessibilityMaxValueAttribute = "AXMaxValue";
inline constexpr std::string_view NSAccessibilityEnabledAttribute = "AXEnabled";
inline constexpr std::string_view NSAccessibilityFocusedAttribute = "AXFocused";
inline constexpr std::string_view NSAccessibilitySelectedAttribute = "AXSelected";
inline constexpr std::string_view NSAccessibilityExpandedAttribute = "AXExpanded";
inline constexpr std::string_view NSAccessibilityParentAttribute = "AXParent";
inline constexpr std::string_view NSAccessibilityChildrenAttribute = "AXChildren";
inline constexpr std::string_view NSAccessibilityVisibleChildrenAttribute = "AXVisibleChildren";
inline constexpr std::string_view NSAccessibilitySelectedChildrenAttribute = "AXSelectedChildren";
inline constexpr std::string_view NSAccessibilityOrientationAttribute = "AXOrientation";
inline constexpr std::string_view NSAccessibilityPositionAttribute = "AXPosition";  // lower left, in screen space
inline constexpr std::string_view NSAccessibilitySizeAttribute = "AXSize";

// With a parameter: of a range the frame in screen space, and of a point in screen space the range of the character there.
inline constexpr std::string_view NSAccessibilityBoundsForRangeParameterizedAttribute = "AXBoundsForRange";
inline constexpr std::string_view NSAccessibilityRangeForPositionParameterizedAttribute = "AXRangeForPosition";

inline constexpr std::string_view NSAccessibilityUnknownRole = "AXUnknown";
inline constexpr std::string_view NSAccessibilityApplicationRole = "AXApplication";
inline constexpr std::string_view NSAccessibilityWindowRole = "AXWindow";
inline constexpr std::string_view NSAccessibilityBusyIndicatorRole = "AXBusyIndicator";
inline constexpr std::string_view NSAccessibilityButtonRole = "AXButton";
inline constexpr std::string_view NSAccessibilityCheckBoxRole = "AXCheckBox";
inline constexpr std::string_view NSAccessibilityDisclosureTriangleRole = "AXDisclosureTriangle";
inline constexpr std::string_view NSAccessibilityGroupRole = "AXGroup";
inline constexpr std::string_view NSAccessibilityImageRole = "AXImage";
inline constexpr std::string_view NSAccessibilityLevelIndicatorRole = "AXLevelIndicator";
inline constexpr std::string_view NSAccessibilityLinkRole = "AXLink";
inline constexpr std::string_view NSAccessibilityListRole = "AXList";
inline constexpr std::string_view NSAccessibilityMenuButtonRole = "AXMenuButton";
inline constexpr std::string_view NSAccessibilityMenuItemRole = "AXMenuItem";
inline constexpr std::string_view NSAccessibilityMenuRole = "AXMenu";
inline constexpr std::string_view NSAccessibilityPopUpButtonRole = "AXPopUpButton";
inline constexpr std::string_view NSAccessibilityProgressIndicatorRole = "AXProgressIndicator";
inline constexpr std::string_view NSAccessibilityRadioButtonRole = "AXRadioButton";
inline constexpr std::string_view NSAccessibilityRadioGroupRole = "AXRadioGroup";
inline constexpr std::string_view NSAccessibilityRowRole = "AXRow";
inline constexpr std::string_view NSAccessibilityScrollBarRole = "AXScrollBar";
inline constexpr std::string_view NSAccessibilitySliderRole = "AXSlider";
inline constexpr std::string_view NSAccessibilitySortButtonRole = "AXSortButton";  // the header of a column
inline constexpr std::string_view NSAccessibilityStaticTextRole = "AXStaticText";
inline constexpr std::string_view NSAccessibilityTabButtonRole = "AXTabButton";  // one of the tabs of a group
inline constexpr std::string_view NSAccessibilityTabGroupRole = "AXTabGroup";
inline constexpr std::string_view NSAccessibilityTableRole = "AXTable";
inline constexpr std::string_view NSAccessibilityTextAreaRole = "AXTextArea";
inline constexpr std::string_view NSAccessibilityTextFieldRole = "AXTextField";

inline constexpr std::string_view NSAccessibilityVerticalOrientationValue = "AXVerticalOrientation";
inline constexpr std::string_view NSAccessibilityHorizontalOrientationValue = "AXHorizontalOrientation";

inline constexpr std::string_view NSAccessibilityPressAction = "AXPress";
inline constexpr std::string_view NSAccessibilityIncrementAction = "AXIncrement";
inline constexpr std::string_view NSAccessibilityDecrementAction = "AXDecrement";
inline constexpr std::string_view NSAccessibilityShowMenuAction = "AXShowMenu";

inline constexpr std::string_view NSAccessibilityCreatedNotification = "AXCreated";
inline constexpr std::string_view NSAccessibilityUIElementDestroyedNotification = "AXUIElementDestroyed";
inline constexpr std::string_view NSAccessibilityFocusedUIElementChangedNotification = "AXFocusedUIElementChanged";
inline constexpr std::string_view NSAccessibilitySelectedChildrenChangedNotification = "AXSelectedChildrenChanged";
inline constexpr std::string_view NSAccessibilitySelectedTextChangedNotification = "AXSelectedTextChanged";
inline constexpr std::string_view NSAccessibilityValueChangedNotification = "AXValueChanged";
inline constexpr std::string_view NSAccessibilityTitleChangedNotification = "AXTitleChanged";
inline constexpr std::string_view NSAccessibilityEnabledChangedNotification = "AXEnabledChanged";

}  // namespace tessaluna::platform
