#include "tools/artwork/Arguments.h"

#include <algorithm>
#include <string>

#include "tools/artwork/Failure.h"
#include "tools/artwork/nearestNames.h"

namespace artwork {

namespace {

// A value may begin with one dash, such as a negative number.
bool isOptionLike(std::string_view word) { return word.starts_with("--"); }

[[noreturn]] void failOnUnknownOption(std::string_view word, std::span<const Option> options) {
  std::vector<std::string_view> names = {"--help"};
  for (const Option& option : options) names.push_back(option.name);
  throw UsageFailure("unknown option " + inQuotes(word) + suggestion(word, names));
}

}  // namespace

Arguments Arguments::parse(std::span<char* const> words, std::span<const Option> options, RoutineFlags flags) {
  Arguments result;
  result.options_ = options;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (word.size() < 2 || word[0] != '-') {
      result.words_.push_back(word);
      continue;
    }
    const auto takeValue = [&]() -> std::optional<std::string_view> {
      if (i + 1 == words.size() || isOptionLike(words[i + 1])) return std::nullopt;
      return std::string_view(words[++i]);
    };
    const auto option = std::ranges::find(options, word, &Option::name);
    if (option != options.end()) {
      std::optional<std::string_view> value = "";
      if (option->value == Option::Value::Required) value = takeValue();
      if (!value) throw UsageFailure(std::string(word) + " needs a value");
      if (!result.values_.emplace(word, *value).second) throw UsageFailure(std::string(word) + " is given twice");
    } else if (flags == RoutineFlags::Accepted && isOptionLike(word)) {
      result.flags_.push_back({word.substr(2), takeValue()});
    } else {
      failOnUnknownOption(word, options);
    }
  }
  return result;
}

std::string_view Arguments::onlyWord(std::string_view what) const {
  if (words_.empty()) throw UsageFailure(std::string(what) + " is missing");
  if (words_.size() > 1) throw UsageFailure(inQuotes(words_[1]) + " is one word too many");
  return words_[0];
}

void Arguments::rejectWords() const {
  if (!words_.empty()) throw UsageFailure(inQuotes(words_[0]) + " is one word too many");
}

std::optional<std::string_view> Arguments::value(std::string_view option) const {
  const auto found = values_.find(option);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

}  // namespace artwork
