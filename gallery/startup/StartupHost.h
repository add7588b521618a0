// A simulated start behind a splash, and simulated background tasks in the ready-made line of tasks, as a host runs them. Time
// passes with the clock after start, or with advance.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "gallery/Ticker.h"
#include "tessaluna/ready/tasks/TaskBar.h"
#include "tessaluna/uikit/startup/AppSplashController.h"

namespace gallery {

class StartupHost : public tessaluna::platform::NSObject {
 public:
  void didInit() override;

  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }
  void start();
  void advance(double seconds);

  // Shows the splash until the last step is over; a second call in the meantime begins again.
  void showSplash();
  const tessaluna::platform::Ref<TessalunaUIKit::AppSplashController>& splash() const { return splash_; }

  // A task of that length runs at a speed of its own, and is removed after it is finished or the bar's cross has stopped it.
  void beginTask(double length);
  const tessaluna::platform::Ref<tessaluna::ready::TaskBar>& taskBar() const { return taskBar_; }
  // "Task 1   40 of 100".
  std::vector<std::string> taskLines() const;

 private:
  struct Worker {
    bool isAborted = false;
    double length = 0, position = 0, speed = 0;
    tessaluna::ready::ShownTask shown{};
  };
  void runSplash(double seconds);
  void runTasks(double seconds);
  void report(const std::string& what) const;

  tessaluna::platform::Ref<TessalunaUIKit::AppSplashController> splash_;
  tessaluna::platform::Ref<tessaluna::ready::TaskBar> taskBar_;
  std::map<int, Worker> workers_;  // by number, in that order
  std::function<void(const std::string&)> report_;
  Ticker ticker_;
  double splashSeconds_ = 0;
  int taskCount_ = 0;
};

}  // namespace gallery
