#include "tools/artwork/numbers.h"

#include <charconv>
#include <cmath>
#include <string>
#include <vector>

#include "tools/artwork/Failure.h"
#include "tools/artwork/nearestNames.h"

namespace artwork {

namespace {

// A routine multiplies sizes; beyond this limit the products are no longer finite.
constexpr double largestCoordinate = 1e100;

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

double parseCoordinate(OptionText value) {
  const double number = parseNumber(value);
  if (std::abs(number) > largestCoordinate)
    throw UsageFailure(std::string(value.option) + ": " + inQuotes(value.text) + " is too large");
  return number;
}

}  // namespace

double parseNumber(OptionText value) {
  const char* const end = value.text.data() + value.text.size();
  double number = 0;
  const auto [read, error] = std::from_chars(value.text.data(), end, number);
  // from_chars accepts "nan" and "inf" as numbers.
  if (error != std::errc() || read != end || !std::isfinite(number))
    throw UsageFailure(std::string(value.option) + ": " + inQuotes(value.text) + " is no finite number");
  return number;
}

tessaluna::platform::CGRect parseFrame(OptionText value) {
  const std::vector<std::string_view> parts = split(value.text, ',');
  if (parts.size() != 4) throw UsageFailure(std::string(value.option) + ": " + inQuotes(value.text) + " is no X,Y,W,H");
  double numbers[4];
  for (int i = 0; i < 4; ++i) numbers[i] = parseCoordinate({value.option, parts[i]});
  if (numbers[2] < 0 || numbers[3] < 0)
    throw UsageFailure(std::string(value.option) + ": " + inQuotes(value.text) + " has a negative width or height");
  return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

tessaluna::platform::CGSize parseSize(OptionText value) {
  const std::vector<std::string_view> parts = split(value.text, 'x');
  if (parts.size() != 2) throw UsageFailure(std::string(value.option) + ": " + inQuotes(value.text) + " is no WxH");
  const tessaluna::platform::CGSize size = {parseCoordinate({value.option, parts[0]}),
                                            parseCoordinate({value.option, parts[1]})};
  if (!(size.width > 0 && size.height > 0))
    throw UsageFailure(std::string(value.option) + ": " + inQuotes(value.text) + " needs a width and height above 0");
  return size;
}

bool parseBool(OptionText value) {
  if (value.text == "true") return true;
  if (value.text == "false") return false;
  throw UsageFailure(std::string(value.option) + ": " + inQuotes(value.text) + " is neither true nor false");
}

}  // namespace artwork
