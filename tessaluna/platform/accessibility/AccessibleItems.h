// What an element adopts whose children are many of one kind, as the rows of a table are: they are counted and found without
// being made, each is made when somebody first asks for it, and it stays the same as long as its row exists.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

inline constexpr std::string_view NSAccessibilityIndexAttribute = "AXIndex";  // the row's number from zero
// All rows are others, or there are more or fewer of them.
inline constexpr std::string_view NSAccessibilityRowCountChangedNotification = "AXRowCountChanged";

class AccessibleItems {
 public:
  virtual ~AccessibleItems() = default;
  virtual std::size_t accessibleItemCount() const = 0;
  virtual Ref<NSObject> accessibleItem(std::size_t index) const = 0;  // null beyond the end
  virtual std::optional<std::size_t> indexOfAccessibleItem(const NSObject* item) const = 0;
  // The items that show; those that are selected, by number; the one that has the keyboard or null.
  virtual AccessibilityElements shownAccessibleItems() const = 0;
  virtual std::vector<std::size_t> selectedAccessibleItems() const = 0;
  virtual Ref<NSObject> focusedAccessibleItem() const = 0;
  enum class Selecting { Alone, Besides, Not };
  virtual void selectAccessibleItem(std::size_t index, Selecting how) = 0;
  // The item that a subview is in to clients.
  virtual Ref<NSObject> accessibleItemAround(const NSView& subview) const = 0;
};

}  // namespace tessaluna::platform
