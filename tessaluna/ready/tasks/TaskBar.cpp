#include "tessaluna/ready/tasks/TaskBar.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/ready/parts/CrossButton.h"
#include "tessaluna/ready/parts/controlName.h"

namespace tessaluna::ready {

using namespace platform;
using TessalunaUIKit::ProgressMonitorView;

const ClassInfo TaskBar::staticClassInfo{.name = "tessaluna.ready.TaskBar", .base = &NSView::staticClassInfo};

static constexpr CGFloat usualHeight = 20, monitorWidth = 120, crossSide = 20, gap = 8, lineHeight = 16;

ShownTask::ShownTask(ShownTask&& other) noexcept
    : bar_(std::exchange(other.bar_, {})), number_(std::exchange(other.number_, 0)) {}

ShownTask& ShownTask::operator=(ShownTask&& other) noexcept {
  if (this == &other) return *this;
  end();
  bar_ = std::exchange(other.bar_, {});
  number_ = std::exchange(other.number_, 0);
  return *this;
}

void ShownTask::setPosition(double position) {
  if (const auto bar = bar_.lock()) bar->setPosition(number_, position);
}

void ShownTask::end() {
  if (const auto bar = std::exchange(bar_, {}).lock()) bar->end(number_);
}

void TaskBar::didInit() {
  NSView::didInit();
  monitor_ = make<ProgressMonitorView>(CGRect{0, 0, monitorWidth, usualHeight});
  title_ = NSTextField::labelWithString("");
  title_->setLineBreakMode(NSLineBreakByTruncatingTail);
  abort_ = make<CrossButton>(CGRect{0, 0, crossSide, crossSide});
  abort_->setAction([this] { abortOldest(); });
  addSubview(monitor_);
  addSubview(title_);
  addSubview(abort_);
  place();
  showOldest();
}

ShownTask TaskBar::begin(TaskDescription task) {
  const std::uint64_t number = ++lastNumber_;
  // What is not a length counts as 0: the bar shows how far the others are.
  if (!std::isfinite(task.length) || task.length < 0) task.length = 0;
  std::string key = task.title;
  const auto isTaken = [&](const std::string& name) { return monitor_->backgroundTasks()->objectForKey(name) != nullptr; };
  for (int i = 2; isTaken(key); ++i) key = task.title + " " + std::to_string(i);
  monitor_->addBackgroundTaskProgress(key, task.length, nullptr);
  tasks_.emplace(number, Task{.description = std::move(task), .key = std::move(key)});
  showOldest();
  return {std::dynamic_pointer_cast<TaskBar>(shared_from_this()), number};
}

void TaskBar::setPosition(std::uint64_t number, double position) {
  const auto task = tasks_.find(number);
  if (task == tasks_.end()) return;
  const double length = task->second.description.length;
  // What is not a number is the beginning, too.
  monitor_->setBackgroundTaskProgressPosition(position > 0 ? std::min(position, length) : 0, task->second.key);
}

void TaskBar::end(std::uint64_t number) {
  const auto task = tasks_.find(number);
  if (task == tasks_.end()) return;
  monitor_->removeBackgroundTaskProgress(task->second.key);
  // What its abort owns, such as other tasks, ends after it.
  const auto ended = tasks_.extract(task);
  // It hides itself also where only tasks of unknown length are left.
  monitor_->setHidden(tasks_.empty());
  showOldest();
}

void TaskBar::abortOldest() {
  if (tasks_.empty()) return;
  Task& oldest = tasks_.begin()->second;
  if (!oldest.description.abort || std::exchange(oldest.isAborted, true)) return;
  const auto abort = oldest.description.abort;  // the task may end in the call
  showOldest();
  abort();
}

void TaskBar::setAbortText(std::string text) {
  abortText_ = std::move(text);
  showOldest();
}

void TaskBar::showOldest() {
  setHidden(tasks_.empty());
  if (tasks_.empty()) return;
  const Task& oldest = tasks_.begin()->second;
  const std::string& title = oldest.description.title;
  if (title_->stringValue() != title) title_->setStringValue(title);
  abort_->setHidden(!oldest.description.abort);
  abort_->setEnabled(!oldest.isAborted);
  setNameAndToolTip(*abort_, abortText_ + " " + title);
}

CGSize TaskBar::intrinsicContentSize() const { return {noIntrinsicMetric, usualHeight}; }

void TaskBar::resizeSubviewsWithOldSize(CGSize) { place(); }

// The monitor keeps the size that its parts were placed in.
void TaskBar::place() {
  const CGSize size = bounds().size;
  monitor_->setFrameOrigin({0, (size.height - monitor_->frame().size.height) / 2});
  const CGFloat x = monitorWidth + gap, right = std::max(size.width - crossSide, x);
  title_->setFrame({x, (size.height - lineHeight) / 2, std::max<CGFloat>(right - gap - x, 0), lineHeight});
  abort_->setFrame({right, (size.height - crossSide) / 2, crossSide, crossSide});
}

}  // namespace tessaluna::ready
