// Numbers as a command line gives them. All throw a UsageFailure that names the option for what they cannot read.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/Geometry.h"

namespace artwork {

struct OptionText {
  std::string_view option;  // "--frame"
  std::string_view text;
};

double parseNumber(OptionText value);                      // finite, and all of the text
tessaluna::platform::CGRect parseFrame(OptionText value);  // "X,Y,W,H", without a negative size
tessaluna::platform::CGSize parseSize(OptionText value);   // "WxH", both above 0
bool parseBool(OptionText value);                          // "true" or "false"

}  // namespace artwork
