// A file that appears whole or not at all: it is written beside its place under another name, and commit() moves it there.
// Without a commit nothing remains, and an earlier file stays. All functions throw a Failure with the reason.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace artwork {

class OutputFile {
 public:
  explicit OutputFile(const std::string& path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  std::FILE* stream() { return stream_; }
  void commit();
  [[noreturn]] void fail(const std::string& reason) const;

 private:
  void open();

  std::string path_;              // as the user gave it, for messages
  std::filesystem::path target_;  // where links lead to
  std::filesystem::path temporary_;
  std::FILE* stream_ = nullptr;
};

}  // namespace artwork
