#include "gallery/startup/StartupHost.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "gallery/startup/splash.h"

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
  worker.shown = taskBar_->begin(
      {.title = nameOf(number), .length = length, .abort = [this, number] { workers_.at(number).isAborted = true; }});
  report(nameOf(number) + " begins");
}

void StartupHost::runTasks(double seconds) {
  for (auto task = workers_.begin(); task != workers_.end();) {
    Worker& worker = task->second;
    worker.position = std::min(worker.position + worker.speed * seconds, worker.length);
    worker.shown.setPosition(worker.position);
    if (!worker.isAborted && worker.position < worker.length) {
      ++task;
      continue;
    }
    report(nameOf(task->first) + (worker.isAborted ? " aborted" : " ends"));
    task = workers_.erase(task);
  }
}

std::vector<std::string> StartupHost::taskLines() const {
  std::vector<std::string> lines;
  for (const auto& [number, worker] : workers_)
    lines.push_back(nameOf(number) + "   " + std::to_string(std::lround(worker.position)) + " of " +
                    std::to_string(std::lround(worker.length)));
  return lines;
}

void StartupHost::report(const std::string& what) const {
  if (report_) report_(what);
}

}  // namespace gallery
