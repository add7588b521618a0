// Where the project's source stands, for tests that read files of it.
#pragma once

#include <string>

namespace harness {

std::string sourceFolder();

}  // namespace harness
