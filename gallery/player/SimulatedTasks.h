// Background work that takes its time and does nothing else, in a task bar. Time passes only by advance.
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <string>

#include "tessaluna/ready/tasks/TaskBar.h"

namespace gallery {

class SimulatedTasks {
 public:
  explicit SimulatedTasks(tessaluna::platform::Ref<tessaluna::ready::TaskBar> bar) : bar_(std::move(bar)) {}

  // Is notified when a task has ended by itself or the user has ended it.
  enum class End { Finished, Stopped };
  void setOnEnd(std::function<void(const std::string& title, End end)> ended) { ended_ = std::move(ended); }

  void begin(const std::string& title, double seconds);
  void advance(double seconds);

 private:
  struct Task {
    std::string title;
    double position = 0, length = 0;
    std::shared_ptr<bool> isStopped;
    tessaluna::ready::ShownTask shown;
  };
  const tessaluna::platform::Ref<tessaluna::ready::TaskBar> bar_;
  std::list<Task> tasks_;
  std::function<void(const std::string&, End)> ended_;
};

}  // namespace gallery
