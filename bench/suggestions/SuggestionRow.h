// How one row of the completion pop-up looks: a picture, a label and below it a detail. It is an interface file, as every host
// of a pop-up writes one.
#pragma once

#include <string>

namespace bench {

// Makes the rows known, and the library's classes with them. Returns the name for setSuggestionPrototype.
std::string registerSuggestionRow();

}  // namespace bench
