// tessaluna-artwork: lists, describes and paints the artwork of the kit, for developers and designers.
#include <algorithm>
#include <cstdio>
#include <new>
#include <string>
#include <vector>

#include "tools/artwork/Command.h"
#include "tools/artwork/Failure.h"
#include "tools/artwork/nearestNames.h"

namespace artwork {
namespace {

constexpr const Command* commands[] = {&listCommand, &opsCommand, &renderCommand, &sheetCommand};

void printUsage(const Command& command) {
  std::printf("tessaluna-artwork %s %s\n", std::string(command.name).c_str(), std::string(command.usage).c_str());
  std::size_t start = 0;
  while (start < command.summary.size()) {
    const std::size_t end = std::min(command.summary.find('\n', start), command.summary.size());
    std::printf("    %s\n", std::string(command.summary.substr(start, end - start)).c_str());
    start = end + 1;
  }
}

void printHelp() {
  for (const Command* command : commands) printUsage(*command);
  std::printf("NAME is drawLeftArrow, LeftArrow or drawLeftArrowWithFrame:enabled:isPressed:.\n");
}

bool isHelp(std::string_view word) { return word == "--help" || word == "-h" || word == "help"; }

void run(std::span<char* const> words) {
  if (words.empty()) throw UsageFailure("a command is missing: list, ops, render or sheet; --help explains them");
  if (isHelp(words[0])) return printHelp();

  const auto command = std::ranges::find(commands, std::string_view(words[0]), &Command::name);
  if (command == std::ranges::end(commands)) {
    std::vector<std::string_view> names;
    for (const Command* known : commands) names.push_back(known->name);
    throw UsageFailure("unknown command " + inQuotes(words[0]) + suggestion(words[0], names));
  }
  words = words.subspan(1);
  if (std::ranges::find(words, std::string_view("--help")) != words.end()) return printUsage(**command);
  (*command)->run(Arguments::parse(words, (*command)->options, (*command)->routineFlags));
}

int report(const char* message, int status) {
  std::fprintf(stderr, "tessaluna-artwork: %s\n", message);
  return status;
}

}  // namespace
}  // namespace artwork

// 0 on success, 2 for a wrong command line, 1 for any other error.
int main(int count, char** words) {
  try {
    if (count > 0) artwork::run({words + 1, words + count});
  } catch (const artwork::UsageFailure& failure) {
    return artwork::report(failure.what(), 2);
  } catch (const artwork::Failure& failure) {
    return artwork::report(failure.what(), 1);
  } catch (const std::bad_alloc&) {
    return artwork::report("there is not enough memory", 1);
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout)) return artwork::report("cannot write to standard output", 1);
  return 0;
}
