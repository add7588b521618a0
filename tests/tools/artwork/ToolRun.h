// Runs the built tool as a user would and keeps what it said.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace artwork {

struct ToolRun {
  int status = -1;  // of the exit; -1 if the tool was killed
  std::string output;
  std::string errors;
};

// In a folder of the test's own, which goes with it.
class ToolFolder {
 public:
  ToolFolder();
  ~ToolFolder();
  ToolFolder(const ToolFolder&) = delete;
  ToolFolder& operator=(const ToolFolder&) = delete;

  // File names are taken from this folder. `setup` is a line of shell that goes before: "ulimit -v 100000".
  ToolRun run(const std::vector<std::string>& arguments, const std::string& setup = "") const;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  std::vector<std::string> files() const;  // their names, in order

 private:
  std::filesystem::path path_;
};

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& content);

}  // namespace artwork
