#include "tests/harness/sourceFolder.h"

namespace harness {

std::string sourceFolder() { return TESSALUNA_SOURCE_DIR; }

}  // namespace harness
