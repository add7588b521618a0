// The parts of one command's command line: plain words, options, and the flags of a routine, which only the routine
// can check.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace artwork {

struct Option {
  enum class Value { None, Required };
  std::string_view name;  // "--frame"
  Value value = Value::Required;
};

enum class RoutineFlags { Rejected, Accepted };

class Arguments {
 public:
  struct Flag {
    std::string_view name;                  // without its dashes
    std::optional<std::string_view> value;  // absent if none followed
  };

  // The views are into the words. Throws a UsageFailure for an unknown or repeated option and for a missing value.
  static Arguments parse(std::span<char* const> words, std::span<const Option> options, RoutineFlags flags);

  // The only plain word. Throws a UsageFailure if there is none or more than one: "`ops` needs the NAME of a routine".
  std::string_view onlyWord(std::string_view what) const;
  void rejectWords() const;

  bool has(std::string_view option) const { return values_.contains(option); }
  std::optional<std::string_view> value(std::string_view option) const;
  std::span<const Flag> flags() const { return flags_; }
  std::span<const Option> options() const { return options_; }

 private:
  std::span<const Option> options_;
  std::vector<std::string_view> words_;
  std::map<std::string_view, std::string_view> values_;
  std::vector<Flag> flags_;
};

}  // namespace artwork
