// Runs a fuzz target on files, for compilers that bring no fuzzer and for every run of the tests:
//   replay FILE-OR-FOLDER...      each file once, in the order of their names
//   replay --random COUNT FOLDER  that many inputs made up, in bits and pieces of the folder's; always the same ones
// Stops at an input that takes more processor time or memory than an input may; what else is wrong the target finds.
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
constexpr int mostSeconds = 60;
constexpr long mostKilobytes = 2048 * 1024;  // freed memory stays in quarantine
#else
constexpr int mostSeconds = 10;
constexpr long mostKilobytes = 384 * 1024;
#endif

char current[512];  // the name of the input, for the signal's handler

void stopForTime(int) {
  constexpr char text[] = "replay: an input takes too long: ";
  // What else can be done in a handler is little.
  if (write(2, text, sizeof text - 1) < 0 || write(2, current, std::strlen(current)) < 0 || write(2, "\n", 1) < 0) _exit(2);
  std::abort();
}

// Processor time, not time on the clock: the machine may be busy.
void setTimeLimit(int seconds) {
  const itimerval limit{{0, 0}, {seconds, 0}};
  setitimer(ITIMER_PROF, &limit, nullptr);
}

void run(const std::string& name, const Bytes& bytes) {
  std::snprintf(current, sizeof current, "%s", name.c_str());
  setTimeLimit(mostSeconds);
  // A copy of the exact size, so that a sanitizer sees reads beyond its end.
  const Bytes exact(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
  setTimeLimit(0);
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  if (usage.ru_maxrss > mostKilobytes) {
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

// Pieces of known inputs one behind the other, with some bytes changed.
Bytes madeUp(std::mt19937& random, const std::vector<Bytes>& known) {
  Bytes bytes;
  for (unsigned pieces = 1 + random() % 4; pieces > 0; --pieces) {
    const Bytes& from = known[random() % known.size()];
    if (from.empty()) continue;
    const std::size_t start = random() % from.size(), count = random() % (from.size() - start + 1);
    bytes.insert(bytes.end(), from.begin() + std::ptrdiff_t(start), from.begin() + std::ptrdiff_t(start + count));
  }
  for (std::size_t left = bytes.size() / 12 + random() % 4; left > 0 && !bytes.empty(); --left)
    bytes[random() % bytes.size()] = std::uint8_t(random());
  return bytes;
}

// One that fails is left behind, to be run by itself and to become a file of the corpus.
void runRandom(int count, const std::vector<Bytes>& known) {
  std::mt19937 random(1);
  for (int i = 0; i < count; ++i) {
    const Bytes bytes = madeUp(random, known);
    if (const char* folder = std::getenv("REPLAY_KEEP")) {
      std::ofstream(std::string(folder) + "/last-input", std::ios::binary)
          .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    }
    run("made-up input " + std::to_string(i), bytes);
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  int random = 0;
  if (arguments.size() >= 2 && arguments[0] == "--random") {
    random = std::atoi(arguments[1].c_str());
    arguments.erase(arguments.begin(), arguments.begin() + 2);
  }
  std::signal(SIGPROF, stopForTime);
  std::vector<Bytes> known;
  for (const std::string& place : arguments) {
    for (const std::filesystem::path& file : filesIn(place)) {
      known.push_back(contentOf(file));
      run(file.string(), known.back());
    }
  }
  if (known.empty()) {
    std::fprintf(stderr, "replay: there is no input\n");
    return 1;
  }
  runRandom(random, known);
  std::printf("%zu inputs of files, %d made up\n", known.size(), random);
}
