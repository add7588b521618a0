// What holds for all windows whatever the user and the program have done. The text says what does not; empty: all is well.
#pragma once

#include <string>

#include "tessaluna/backends/headless/HeadlessBackend.h"

namespace fuzz {

// At any time between two steps. They draw all windows again.
std::string faultOf(tessaluna::backend::headless::HeadlessBackend& desktop);
// While no button and no key is down, and nothing happened for a while.
std::string faultAtRest();

}  // namespace fuzz
