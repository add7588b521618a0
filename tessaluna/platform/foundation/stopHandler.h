// What a host does before stopProgram ends the program: it logs the report, or throws, and then the program continues where
// that is caught. The call that was stopped may have done half of its work, so what it was about should not be used again.
#pragma once

#include <functional>
#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

// Called on the thread that is stopped, with the report. When it returns, the report goes to standard error and the program
// aborts; so it does at once when the function stops the program itself. An empty one takes it back. Set it before other
// threads use the library.
void setStopHandler(std::function<void(std::string_view report)> handler);

}  // namespace tessaluna::platform
