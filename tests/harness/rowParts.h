// The controls in a row of a table, by their class.
#pragma once

#include <stdexcept>

#include "tessaluna/platform/views/NSTableView.h"

namespace harness {

// The row must be visible.
template <class View>
View& partOfRow(tessaluna::platform::NSTableView& table, std::size_t row) {
  for (const tessaluna::platform::Ref<tessaluna::platform::NSView>& part : table.viewAtRow(row)->subviews())
    if (auto* found = dynamic_cast<View*>(part.get())) return *found;
  throw std::logic_error("the row has no such part");
}

}  // namespace harness
