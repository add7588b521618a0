// The controls and texts of a ready-made transport bar.
#pragma once

#include <string>
#include <vector>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/ready/transport/TransportBar.h"

namespace harness {

// The button with this tool tip; null for an unknown one.
inline tessaluna::platform::Ref<tessaluna::platform::NSControl> transportControl(const tessaluna::ready::TransportBar& bar,
                                                                                 const std::string& name) {
  for (const tessaluna::platform::Ref<tessaluna::platform::NSView>& view : bar.subviews())
    if (auto one = std::dynamic_pointer_cast<tessaluna::platform::NSControl>(view); one && one->toolTip() == name)
      return one;
  return nullptr;
}

// Title, elapsed time, length.
inline std::vector<std::string> transportTexts(const tessaluna::ready::TransportBar& bar) {
  std::vector<std::string> result;
  for (const tessaluna::platform::Ref<tessaluna::platform::NSView>& view : bar.subviews())
    if (const auto* label = dynamic_cast<const tessaluna::platform::NSTextField*>(view.get()))
      result.push_back(label->stringValue());
  return result;
}

}  // namespace harness
