#include "tessaluna/platform/foundation/numberText.h"

#include <charconv>

namespace tessaluna::platform {

std::string numberText(double number) {
  if (number == 0) return "0";
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, number).ptr;
  return std::string(text, end);
}

}  // namespace tessaluna::platform
