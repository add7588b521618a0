// One thing that a search has found, as a row of a search field's pop-up shows it.
#pragma once

#include <cstdint>
#include <string>

#include "tessaluna/platform/graphics/NSImage.h"

namespace tessaluna::ready {

struct SearchRow {
  std::string title;
  std::string detail{};   // a second, smaller line; empty: the title is alone
  std::string section{};  // what is above the first of neighbouring rows that name the same; empty: nothing
  std::int64_t id = 0;    // the host's own, only carried back to it
  platform::Ref<platform::NSImage> image{};  // at the left, 28 points wide and high; null: none
};

}  // namespace tessaluna::ready
