// What an object answers to assistive clients, which see a tree of elements: the application, its windows, what is in
// them. Clients do not see an ignored object; its children take its place. Everything is asked through attributes by name, and
// the operations below are where the attributes of most objects come from.
//
// Views, cells, windows and the application derive from this; so may an NSObject that represents a painted part.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"
#include "tessaluna/platform/accessibility/names.h"
#include "tessaluna/platform/foundation/Forward.h"

namespace tessaluna::platform {

class NSAccessibility {
 public:
  virtual ~NSAccessibility();

  // True here for one that is an NSAccessibilityButton too, from which role, label and actions then come.
  virtual bool isAccessibilityElement() const;
  virtual bool accessibilityIsIgnored() const { return !isAccessibilityElement(); }

  virtual std::string accessibilityRole() const;
  virtual std::string accessibilityTitle() const { return {}; }
  virtual std::string accessibilityHelp() const { return {}; }
  virtual AccessibilityValue accessibilityValue() const { return {}; }
  virtual bool isAccessibilityEnabled() const { return true; }
  virtual bool isAccessibilityFocused() const { return false; }
  virtual CGRect accessibilityFrame() const { return {}; }  // screen space

  // The nearest ancestor that is not ignored, and the children, of which none is ignored; either may be null.
  virtual Ref<NSObject> accessibilityParent() const { return nullptr; }
  virtual std::optional<AccessibilityElements> accessibilityChildren() const;

  // An attribute that the object does not have is absent. Children are those of accessibilityChildren as it is here,
  // not as a derived class has it.
  virtual AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const;
  // accessibilityAttributeValue:forParameter:, such as the frame of a range of characters. Absent where it is not answered.
  virtual AccessibilityValue accessibilityAttributeValueForParameter(std::string_view /*attribute*/,
                                                                     const AccessibilityValue& /*parameter*/) const {
    return {};
  }
  virtual bool accessibilityIsAttributeSettable(std::string_view) const { return false; }
  virtual void accessibilitySetValue(const AccessibilityValue&, std::string_view /*forAttribute*/) {}

  virtual std::vector<std::string> accessibilityActionNames() const;
  virtual void accessibilityPerformAction(std::string_view action);

  // What the host says of an attribute goes before what the object knows; absent takes that back.
  void accessibilitySetOverrideValue(AccessibilityValue value, std::string_view forAttribute);

  // What a backend keeps of the element. It ends with the element at the latest.
  class Companion {
   public:
    virtual ~Companion() = default;
  };
  Companion* accessibilityCompanion() const { return companion_.get(); }
  void setAccessibilityCompanion(std::unique_ptr<Companion> companion) { companion_ = std::move(companion); }

 protected:
  // Before a host's word, and with the ignored ones among them.
  virtual std::optional<AccessibilityElements> accessibilityOwnChildren() const { return std::nullopt; }

 private:
  const AccessibilityValue* overrideValue(std::string_view attribute) const;
  std::unique_ptr<std::map<std::string, AccessibilityValue, std::less<>>> overrides_;
  std::unique_ptr<Companion> companion_;
};

// Null for an object that has nothing to do with accessibility.
NSAccessibility* accessibilityOf(const Ref<NSObject>& object);

// The element itself, if it is not ignored; otherwise the nearest one above or below it that is not, or null.
Ref<NSObject> NSAccessibilityUnignoredAncestor(Ref<NSObject> element);
Ref<NSObject> NSAccessibilityUnignoredDescendant(const Ref<NSObject>& element);
// The list with the children of ignored elements in their places.
AccessibilityElements NSAccessibilityUnignoredChildren(const AccessibilityElements& elements);

// Reports to assistive clients that something of the element has changed. A backend observes it through the center, whose
// notifications have the element as their object.
void NSAccessibilityPostNotification(const Ref<NSObject>& element, std::string_view notification);
NSNotificationCenter& accessibilityNotificationCenter();

}  // namespace tessaluna::platform
