// An addition: the links of a view as assistive clients see them, each an element with the role of a link, its text as its name,
// its place on the screen and one action, which presses it.
#pragma once

#include <string>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace TessalunaUIKit {

// What a view with links knows of them, by their indexes. Derived from by the view.
class LinksForClients {
 public:
  virtual ~LinksForClients() = default;
  virtual std::size_t numberOfLinks() const = 0;
  virtual std::string textOfLink(std::size_t index) const = 0;                   // a link without text is left out
  virtual tessaluna::platform::CGRect frameOfLink(std::size_t index) const = 0;  // screen space
  virtual bool isLinkFocused(std::size_t) const { return false; }
  virtual void pressLink(std::size_t index) = 0;
  virtual tessaluna::platform::Ref<tessaluna::platform::NSObject> parentOfLinks() const = 0;  // the element that they are in
};

// The elements, which are the same ones until the links change.
class AccessibleLinks {
 public:
  // Both arguments are the same object: the view that has this as a member.
  tessaluna::platform::AccessibilityElements elements(tessaluna::platform::NSObject& view, LinksForClients& links);
  // The next call makes others. Clients are notified that the earlier ones are gone.
  void linksDidChange();

 private:
  tessaluna::platform::AccessibilityElements elements_;
};

}  // namespace TessalunaUIKit
