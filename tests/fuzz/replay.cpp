// Runs a fuzz target over a corpus without a fuzzer: each file as it is, cut off at several places, and with bytes changed by
// a seeded generator. A crash is the failure; the file that was at work is told before it runs.
//   PROGRAM FOLDER [CHANGES]    so many changed forms of each file, 50 unless told
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <span>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes read(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(file), {});
}

void run(const Bytes& bytes) { LLVMFuzzerTestOneInput(bytes.data(), bytes.size()); }

Bytes changed(Bytes bytes, std::mt19937& engine) {
  const auto below = [&](std::size_t count) { return engine() % count; };
  for (std::size_t changes = 1 + below(8); changes > 0 && !bytes.empty(); --changes) {
    const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(below(bytes.size()));
    switch (below(3)) {
      case 0: *place = static_cast<std::uint8_t>(engine()); break;
      case 1: bytes.erase(place); break;
      case 2: bytes.insert(place, bytes[below(bytes.size())]); break;
    }
  }
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  const std::span given(argv + 1, argv + argc);
  const std::vector<std::string> arguments(given.begin(), given.end());
  if (arguments.empty() || !std::filesystem::is_directory(arguments[0])) {
    std::fprintf(stderr, "replay: the first argument is the folder of a corpus\n");
    return 1;
  }
  const int changes = arguments.size() > 1 ? std::atoi(arguments[1].c_str()) : 50;
  std::vector<std::filesystem::path> paths(std::filesystem::directory_iterator{arguments[0]}, {});
  std::ranges::sort(paths);
  for (const std::filesystem::path& path : paths) {
    std::printf("%s\n", path.filename().c_str());
    std::fflush(stdout);
    const Bytes bytes = read(path);
    run(bytes);
    for (std::size_t eighth = 0; eighth < 8; ++eighth)
      run(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() * eighth / 8)));
    std::mt19937 engine(1);
    for (int i = 0; i < changes; ++i) run(changed(bytes, engine));
  }
  if (paths.empty()) std::fprintf(stderr, "replay: the corpus is empty\n");
  return paths.empty() ? 1 : 0;
}
