// A thread that Qt has waited for may still be in its last steps when the process looks for leaks, and the leak sanitizer
// fails on it. So each program waits until its pooled threads have ended, and no other thread begins or ends.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>

namespace {

struct Threads {
  std::set<std::string> ids;
  bool hasPooled = false;
};

Threads threadsNow() {
  Threads found;
  std::error_code gone;
  for (std::filesystem::directory_iterator task("/proc/self/task", gone), end; !gone && task != end; task.increment(gone)) {
    found.ids.insert(task->path().filename());
    std::string name;
    std::ifstream comm(task->path() / "comm");
    if (std::getline(comm, name) && name.starts_with("Thread (pooled")) found.hasPooled = true;
  }
  return found;
}

// A pooled thread has no name in its first steps.
void waitForThreads() {
  using namespace std::chrono_literals;
  using Clock = std::chrono::steady_clock;
  const auto deadline = Clock::now() + 10s;
  std::set<std::string> before;
  for (auto since = Clock::now(); Clock::now() < deadline; std::this_thread::sleep_for(1ms)) {
    Threads now = threadsNow();
    if (now.hasPooled || now.ids != before) since = Clock::now();
    if (Clock::now() - since > 100ms) return;
    before = std::move(now.ids);
  }
}

// What is registered first is called last: after Qt has ended its pools, before the sanitizer looks.
[[maybe_unused]] const int registered = std::atexit(waitForThreads);

}  // namespace
