// Runs a fuzz target over a corpus, for compilers without a fuzzer and for every run of the tests:
//   PROGRAM [--changes COUNT] FILE-OR-FOLDER...
// It runs each file as it is, cut off at several places, and in COUNT changed forms, 50 by default, which are the same every
// time. It stops at an input that takes too much processor time or memory; the target finds all other errors. It then prints
// the name of the current input, and writes a changed input to the file replay-failed, from which it can be run again.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

#if defined(__SANITIZE_ADDRESS__)
constexpr int maxSeconds = 60;
constexpr long maxKilobytes = 2048 * 1024;  // freed memory stays in quarantine
#else
constexpr int maxSeconds = 10;
constexpr long maxKilobytes = 384 * 1024;
#endif

// The current input, for signal handlers, which can do little.
char current[512];
const Bytes* currentBytes = nullptr;

void say(const char* text) {
  if (write(2, text, std::strlen(text)) < 0) _exit(2);
}

void reportInput(int signal) {
  say("replay: failed at ");
  say(current);
  say("\n");
  const int file = open("replay-failed", O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (file >= 0 && write(file, currentBytes->data(), currentBytes->size()) < 0) say("replay: it could not be written\n");
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void stopForTime(int) {
  say("replay: an input takes too long\n");
  std::abort();
}

// Processor time and not clock time, since the machine may be busy.
void setTimeLimit(int seconds) {
  const itimerval limit{{0, 0}, {seconds, 0}};
  setitimer(ITIMER_PROF, &limit, nullptr);
}

void run(const std::string& name, const Bytes& bytes) {
  std::snprintf(current, sizeof current, "%s", name.c_str());
  setTimeLimit(maxSeconds);
  // A copy of the exact size, so that a sanitizer sees reads beyond its end.
  const Bytes exact(bytes.begin(), bytes.end());
  currentBytes = &exact;
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
  setTimeLimit(0);
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  if (usage.ru_maxrss > maxKilobytes) {
    std::fprintf(stderr, "replay: %s took the memory to %ld kilobytes\n", current, usage.ru_maxrss);
    std::abort();
  }
}

std::vector<std::filesystem::path> filesIn(const std::filesystem::path& place) {
  std::vector<std::filesystem::path> files;
  if (!std::filesystem::is_directory(place)) return {place};
  for (const auto& entry : std::filesystem::recursive_directory_iterator(place))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

Bytes contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    std::fprintf(stderr, "replay: %s cannot be read\n", path.c_str());
    std::exit(1);
  }
  return Bytes(std::istreambuf_iterator<char>(file), {});
}

// Some bytes are changed, left out or inserted, and sometimes a piece of another input is appended.
Bytes changed(Bytes bytes, const std::vector<Bytes>& others, std::mt19937& random) {
  const auto below = [&](std::size_t count) { return random() % count; };
  if (below(4) == 0) {
    const Bytes& other = others[below(others.size())];
    const auto from = std::ptrdiff_t(below(other.size() + 1));
    bytes.insert(bytes.end(), other.begin() + from, other.end());
  }
  for (std::size_t changes = 1 + below(8); changes > 0 && !bytes.empty(); --changes) {
    const auto place = bytes.begin() + std::ptrdiff_t(below(bytes.size()));
    switch (below(3)) {
      case 0: *place = std::uint8_t(random()); break;
      case 1: bytes.erase(place); break;
      case 2: bytes.insert(place, bytes[below(bytes.size())]); break;
    }
  }
  return bytes;
}

void runForms(const std::string& name, const Bytes& bytes, const std::vector<Bytes>& all, int changes) {
  run(name, bytes);
  for (std::size_t eighth = 0; eighth < 8; ++eighth)
    run(name + ", cut off", Bytes(bytes.begin(), bytes.begin() + std::ptrdiff_t(bytes.size() * eighth / 8)));
  std::mt19937 random(1);
  for (int i = 0; i < changes; ++i) run(name + ", changed", changed(bytes, all, random));
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  int changes = 50;
  if (arguments.size() >= 2 && arguments[0] == "--changes") {
    changes = std::atoi(arguments[1].c_str());
    arguments.erase(arguments.begin(), arguments.begin() + 2);
  }
  std::vector<std::filesystem::path> paths;
  for (const std::string& place : arguments) {
    const auto files = filesIn(place);
    paths.insert(paths.end(), files.begin(), files.end());
  }
  if (paths.empty()) {
    std::fprintf(stderr, "replay: there is no input\n");
    return 1;
  }
  std::vector<Bytes> inputs;
  for (const std::filesystem::path& path : paths) inputs.push_back(contentOf(path));
  std::signal(SIGPROF, stopForTime);
  std::signal(SIGABRT, reportInput);
  std::signal(SIGSEGV, reportInput);
  for (std::size_t i = 0; i < inputs.size(); ++i) runForms(paths[i].string(), inputs[i], inputs, changes);
  std::printf("%zu files, each in %d forms\n", inputs.size(), changes + 9);
}
