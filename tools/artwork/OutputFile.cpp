#include "tools/artwork/OutputFile.h"

#include <cerrno>
#include <cstring>
#include <system_error>

#include "tools/artwork/Failure.h"
#include "tools/artwork/nearestNames.h"

namespace artwork {

namespace fs = std::filesystem;

namespace {

// What a link leads to, whether or not that exists yet: a file that is moved over a link would replace the link.
fs::path resolved(fs::path path) {
  std::error_code error;
  for (int links = 0; links < 40 && fs::is_symlink(path, error); ++links) {
    const fs::path next = fs::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / next;  // next alone if that is absolute
  }
  return path;
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : path_(path), target_(resolved(path)) {
  std::error_code error;
  const fs::file_status status = fs::status(target_, error);
  if (fs::is_directory(status)) fail("it is a directory");
  if (fs::exists(status)) {
    // A device, or a file that its owner protected, must not be moved over.
    if (!fs::is_regular_file(status)) fail("it is not a regular file");
    std::FILE* existing = std::fopen(target_.c_str(), "r+b");
    if (!existing) fail(std::strerror(errno));
    std::fclose(existing);
  }
  open();
}

void OutputFile::open() {
  if (target_.filename().empty()) fail("it is not a file name");
  // "x": never somebody else's file. Leftovers of a killed run may occupy some of the names.
  for (int attempt = 0; attempt < 100 && !stream_; ++attempt) {
    temporary_ = target_;
    // Not derived from the target's name, which may already have the greatest length.
    temporary_.replace_filename(".artwork-" + std::to_string(attempt) + ".part");
    stream_ = std::fopen(temporary_.c_str(), "wbx");
    if (!stream_ && errno != EEXIST) break;
  }
  if (!stream_) fail(std::strerror(errno));
}

OutputFile::~OutputFile() {
  if (!stream_) return;
  std::fclose(stream_);
  std::error_code ignored;
  fs::remove(temporary_, ignored);
}

void OutputFile::commit() {
  // On a full disk, the last bytes may fail as late as here.
  const bool isFlushed = std::fflush(stream_) == 0 && !std::ferror(stream_);
  const int flushError = errno;
  if (!isFlushed) fail(std::strerror(flushError));
  std::error_code error;
  fs::rename(temporary_, target_, error);
  if (error) fail(error.message());
  std::fclose(stream_);
  stream_ = nullptr;
}

void OutputFile::fail(const std::string& reason) const { throw Failure("cannot write " + inQuotes(path_) + ": " + reason); }

}  // namespace artwork
