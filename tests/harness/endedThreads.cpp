// A thread that Qt has waited for may still be in its last steps when the process looks for leaks, and the leak sanitizer
// fails on it. So each program waits until its pooled threads have ended.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace {

bool hasPooledThreads() {
  std::error_code gone;
  for (std::filesystem::directory_iterator task("/proc/self/task", gone), end; !gone && task != end; task.increment(gone)) {
    std::string name;
    std::ifstream comm(task->path() / "comm");
    if (std::getline(comm, name) && name.starts_with("Thread (pooled")) return true;
  }
  return false;
}

void waitForPooledThreads() {
  using namespace std::chrono_literals;
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (hasPooledThreads() && std::chrono::steady_clock::now() < deadline) std::this_thread::sleep_for(1ms);
}

// What is registered first is called last: after Qt has ended its pools, before the sanitizer looks.
[[maybe_unused]] const int registered = std::atexit(waitForPooledThreads);

}  // namespace
