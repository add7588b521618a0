// One thing that a search has found, as a row of a search field's pop-up shows it.
#pragma once

#include <cstdint>
#include <string>

#include "tessaluna/platform/graphics/NSImage.h"

namespace tessaluna::ready {

struct SearchRow {
  std::string title;
  std::string detail{};   // a second, smaller line; empty: the title is alone
  std::string section{};  // the heading above the first of neighbouring rows with the same section; empty: none
  std::int64_t id = 0;    // the host's own; the field only passes it back
  platform::Ref<platform::NSImage> image{};  // at the left, 28 points wide and high; null: the texts are there
};

}  // namespace tessaluna::ready
