// The folder of the project's source, for tests that read its files.
#pragma once

#include <string>

namespace harness {

std::string sourceFolder();

}  // namespace harness
