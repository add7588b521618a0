// What was copied and is to be pasted, shared with the desktop's other programs. There is the general pasteboard and, on some
// desktops, one of what is selected. They hold texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

inline constexpr std::string_view NSPasteboardTypeString = "public.utf8-plain-text";

class NSPasteboard : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  static Ref<NSPasteboard> generalPasteboard();
  // An addition: what was selected last with the mouse, in any program. A desktop without that holds nothing here.
  static Ref<NSPasteboard> selectionPasteboard();
  enum class Contents { Copied, Selected };
  explicit NSPasteboard(Contents contents) : contents_(contents) {}

  void clearContents();
  // False for an unsupported type, and without a backend.
  bool setString(std::string_view text, std::string_view forType);
  // Absent where there is no text, or for another type.
  std::optional<std::string> stringForType(std::string_view type) const;

 private:
  Contents contents_;
};

}  // namespace tessaluna::platform
