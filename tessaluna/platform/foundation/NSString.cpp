#include "tessaluna/platform/foundation/NSString.h"

#include <charconv>
#include <limits>

namespace tessaluna::platform {

const ClassInfo NSString::staticClassInfo{.name = "NSString", .base = &NSObject::staticClassInfo};

namespace {

struct SignedText {
  std::string_view digits;
  bool isNegative = false;
};

// No sign is left for a parser to read, so that "+-1" is not a number.
std::optional<SignedText> numberAtStartOf(std::string_view text, std::string_view mayBeginWith) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  if (text.empty() || mayBeginWith.find(text.front()) == std::string_view::npos) return std::nullopt;
  return SignedText{text, isNegative};
}

}  // namespace

double NSString::doubleValue() const {
  // Neither "inf" nor "nan" is a number.
  const auto text = numberAtStartOf(text_, "0123456789.");
  if (!text) return 0;
  double number = 0;
  const char* end = text->digits.data() + text->digits.size();
  const auto [stop, error] = std::from_chars(text->digits.data(), end, number);
  if (error == std::errc::invalid_argument) return 0;
  if (error == std::errc::result_out_of_range) {
    // Too small or too large: the parser does not say which.
    const std::string_view read(text->digits.data(), stop);
    const std::size_t exponent = read.find_first_of("eE");
    const bool isSmall = exponent != std::string_view::npos ? read.substr(exponent + 1).starts_with('-')
                                                            : read.find_first_not_of("0.") > read.find('.');
    number = isSmall ? 0 : std::numeric_limits<double>::infinity();
  }
  return text->isNegative ? -number : number;
}

std::int64_t NSString::integerValue() const {
  const auto text = numberAtStartOf(text_, "0123456789");
  if (!text) return 0;
  // The least number has no positive counterpart.
  constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  const std::uint64_t most = text->isNegative ? largest + 1 : largest;
  std::uint64_t number = 0;
  const auto result = std::from_chars(text->digits.data(), text->digits.data() + text->digits.size(), number);
  if (result.ec == std::errc::result_out_of_range || number > most) number = most;
  return static_cast<std::int64_t>(text->isNegative ? 0 - number : number);
}

bool NSString::isEqual(const NSObject* other) const {
  const auto* string = dynamic_cast<const NSString*>(other);
  return string && string->text_ == text_;
}

}  // namespace tessaluna::platform
