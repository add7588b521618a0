#include "gallery/startup/StartupHost.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "gallery/startup/splash.h"
#include "tessaluna/platform/foundation/NSData.h"
#include "tessaluna/platform/foundation/NSNumber.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr double stepSeconds = 0.8;
constexpr std::array<const char*, 5> steps{"Reading the settings", "Opening the library", "Looking for outputs",
                                           "Connecting to the services", "Ready"};

std::string nameOf(int task) { return "Task " + std::to_string(task); }

}  // namespace

void StartupHost::didInit() {
  NSObject::didInit();
  monitor_ = make<ProgressMonitorView>(CGRect{0, 0, 260, 20});
  taskBar_ = make<tessaluna::ready::TaskBar>(CGRect{0, 0, 360, 20});
}

void StartupHost::start() {
  ticker_.start([this](double seconds) { advance(seconds); });
}

void StartupHost::advance(double seconds) {
  runSplash(seconds);
  runTasks(seconds);
}

void StartupHost::showSplash() {
  if (splash_) splash_->close();
  splash_ = makeSplash();
  splashSeconds_ = 0;
  splash_->showWindow(nullptr);
  splash_->setInformativeText("A start that only looks like one");
  splash_->setCurrentStepText(steps[0]);
  report("splash " + std::string(steps[0]));
}

void StartupHost::runSplash(double seconds) {
  if (!splash_) return;
  const auto step = static_cast<std::size_t>(splashSeconds_ / stepSeconds);
  splashSeconds_ += seconds;
  const auto reached = static_cast<std::size_t>(splashSeconds_ / stepSeconds);
  if (reached == step) return;
  if (reached < steps.size()) {
    splash_->setCurrentStepText(steps[reached]);
    report("splash " + std::string(steps[reached]));
    return;
  }
  splash_->progressIndicator()->stopAnimation(nullptr);
  splash_->close();
  splash_.reset();
  report("splash closed");
}

void StartupHost::beginTask(double length) {
  const int number = ++taskCount_;
  Worker& worker = workers_[number];
  worker.length = length;
  worker.speed = 10 + 5 * (number % 3);
  monitor_->addBackgroundTaskProgress(nameOf(number), length, &worker.isAborted);
  worker.shown = taskBar_->begin(
      {.title = nameOf(number), .length = length, .abort = [this, number] { workers_.at(number).isAborted = true; }});
  report(nameOf(number) + " begins");
}

// As a host does that knows no more of the task than its record.
void StartupHost::abortOldestTask() {
  if (workers_.empty()) return;
  const auto record = monitor_->backgroundTasks()->objectForKey<NSDictionary>(nameOf(workers_.begin()->first));
  bool* semaphore = nullptr;
  record->objectForKey<NSData>("abortSem")->getBytes(&semaphore, sizeof semaphore);
  *semaphore = true;
}

void StartupHost::runTasks(double seconds) {
  for (auto task = workers_.begin(); task != workers_.end();) {
    Worker& worker = task->second;
    const std::string name = nameOf(task->first);
    worker.position = std::min(worker.position + worker.speed * seconds, worker.length);
    if (worker.isAborted || worker.position >= worker.length) {
      monitor_->removeBackgroundTaskProgress(name);
      report(name + (worker.isAborted ? " aborted" : " ends"));
      task = workers_.erase(task);
    } else {
      monitor_->setBackgroundTaskProgressPosition(worker.position, name);
      worker.shown.setPosition(worker.position);
      ++task;
    }
  }
}

std::vector<std::string> StartupHost::taskLines() const {
  std::vector<std::string> lines;
  for (const auto& [name, object] : monitor_->backgroundTasks()->entries()) {
    const auto& record = dynamic_cast<const NSDictionary&>(*object);
    const auto number = [&](std::string_view key) { return std::lround(record.objectForKey<NSNumber>(key)->doubleValue()); };
    lines.push_back(name + "   " + std::to_string(number("Pos")) + " of " + std::to_string(number("Length")));
  }
  return lines;
}

void StartupHost::report(const std::string& what) const {
  if (report_) report_(what);
}

}  // namespace gallery
