#include "gallery/player/SimulatedTasks.h"

namespace gallery {

void SimulatedTasks::begin(const std::string& title, double seconds) {
  const auto isStopped = std::make_shared<bool>(false);
  tasks_.push_back({.title = title,
                    .length = seconds,
                    .isStopped = isStopped,
                    .shown = bar_->begin({.title = title, .length = seconds, .abort = [isStopped] { *isStopped = true; }})});
}

void SimulatedTasks::advance(double seconds) {
  for (auto task = tasks_.begin(); task != tasks_.end();) {
    task->position += seconds;
    if (!*task->isStopped && task->position < task->length) {
      task->shown.setPosition(task->position);
      ++task;
      continue;
    }
    const End end = *task->isStopped ? End::Stopped : End::Finished;
    const std::string title = task->title;
    task = tasks_.erase(task);
    if (ended_) ended_(title, end);
  }
}

}  // namespace gallery
