#include "tests/tools/artwork/ToolRun.h"

#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace artwork {

namespace fs = std::filesystem;

namespace {

std::string shellWord(const std::string& word) {
  std::string text = "'";
  for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return text + "'";
}

}  // namespace

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void writeFile(const fs::path& path, const std::string& content) { std::ofstream(path, std::ios::binary) << content; }

ToolFolder::ToolFolder() {
  std::string pattern = (fs::temp_directory_path() / "artwork-test-XXXXXX").string();
  path_ = ::mkdtemp(pattern.data());
}

ToolFolder::~ToolFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

ToolRun ToolFolder::run(const std::vector<std::string>& arguments, const std::string& setup) const {
  // What it said is kept beside the folder, so that the folder holds only what the tool makes.
  const std::string output = path_.string() + ".out", errors = path_.string() + ".err";
  std::string command =
      "cd " + shellWord(path_.string()) + " && { " + (setup.empty() ? ":" : setup) + "; " + shellWord(TESSALUNA_ARTWORK);
  for (const std::string& argument : arguments) command += " " + shellWord(argument);
  command += "; } >" + shellWord(output) + " 2>" + shellWord(errors);

  ToolRun run;
  const int status = std::system(command.c_str());
  if (WIFEXITED(status)) run.status = WEXITSTATUS(status);
  run.output = readFile(output);
  run.errors = readFile(errors);
  fs::remove(output);
  fs::remove(errors);
  return run;
}

std::vector<std::string> ToolFolder::files() const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(path_)) names.push_back(entry.path().filename());
  std::ranges::sort(names);
  return names;
}

}  // namespace artwork
