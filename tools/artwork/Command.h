// One command of the tool. Each is in a file of its own; main.cpp lists them.
#pragma once

#include <span>
#include <string_view>

#include "tools/artwork/Arguments.h"

namespace artwork {

struct Command {
  std::string_view name;
  std::string_view usage;    // what follows the command's name
  std::string_view summary;  // one or more lines
  std::span<const Option> options;
  RoutineFlags routineFlags = RoutineFlags::Rejected;
  void (*run)(const Arguments& arguments);  // throws a Failure
};

extern const Command listCommand;
extern const Command opsCommand;
extern const Command renderCommand;
extern const Command sheetCommand;

}  // namespace artwork
