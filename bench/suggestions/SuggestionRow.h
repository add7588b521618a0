// One row of the completion pop-up: a picture, a label and a detail below the label. It is an interface file, which every
// host of a pop-up writes.
#pragma once

#include <string>

namespace bench {

// Registers the rows and the library's classes. Returns the name for setSuggestionPrototype.
std::string registerSuggestionRow();

}  // namespace bench
