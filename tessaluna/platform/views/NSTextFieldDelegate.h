// What a text field reports of its editing: to its delegate, and then by name through the default notification center. The
// notifications' object is the field.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

inline constexpr std::string_view NSControlTextDidBeginEditingNotification = "NSControlTextDidBeginEditingNotification";
inline constexpr std::string_view NSControlTextDidChangeNotification = "NSControlTextDidChangeNotification";
inline constexpr std::string_view NSControlTextDidEndEditingNotification = "NSControlTextDidEndEditingNotification";

class NSTextFieldDelegate {
 public:
  virtual ~NSTextFieldDelegate() = default;
  virtual void controlTextDidBeginEditing(const Ref<NSNotification>&) {}  // before the first change
  virtual void controlTextDidChange(const Ref<NSNotification>&) {}        // by the user
  virtual void controlTextDidEndEditing(const Ref<NSNotification>&) {}
  // control:textShouldBeginEditing: and control:textShouldEndEditing: False refuses.
  virtual bool controlTextShouldBeginEditing(NSControl&, NSText&) { return true; }
  virtual bool controlTextShouldEndEditing(NSControl&, NSText&) { return true; }
  // control:textView:doCommandBySelector: is offered every command of the editor first. True if it was done here.
  virtual bool controlTextViewDoCommandBySelector(NSControl&, NSTextView&, std::string_view /*selector*/) { return false; }
};

}  // namespace tessaluna::platform
