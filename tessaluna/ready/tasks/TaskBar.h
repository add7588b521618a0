// Background tasks of a program in one line: the progress of all of them, the title of the oldest, and a cross that stops it.
// The line is hidden while there are none:
//
//   const auto tasks = make<ready::TaskBar>(CGRect{0, 0, 320, 20});
//   auto scan = tasks->begin({.title = "Scanning the library", .length = 1200, .abort = [&] { scanner.stop(); }});
//   scan.setPosition(300);
//   scan.end();  // or when scan is destroyed
//
// Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/startup/ProgressMonitorView.h"

namespace tessaluna::ready {

class TaskBar;

struct TaskDescription {
  std::string title;
  double length = 1;  // in a unit that all tasks share; 0, negative or not finite: unknown
  // Called once, when the user asks for it; without it there is no cross. The task continues until it ends.
  std::function<void()> abort{};
};

// A task that shows until it ends, at the latest when this is destroyed. It may outlive its bar.
class ShownTask {
 public:
  ShownTask() = default;
  ShownTask(ShownTask&& other) noexcept;
  ShownTask& operator=(ShownTask&& other) noexcept;
  ~ShownTask() { end(); }

  void setPosition(double position);  // from 0 to the length
  void end();
  bool isShown() const { return !bar_.expired(); }

 private:
  friend class TaskBar;
  ShownTask(platform::WeakRef<TaskBar> bar, std::uint64_t number) : bar_(std::move(bar)), number_(number) {}
  platform::WeakRef<TaskBar> bar_;
  std::uint64_t number_ = 0;
};

class TaskBar : public platform::NSView {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TaskBar(platform::CGRect frame) : NSView(frame) {}  // 20 points are the usual height
  void didInit() override;

  [[nodiscard]] ShownTask begin(TaskDescription task);
  std::size_t taskCount() const { return tasks_.size(); }
  // What the cross says, in the user's language; the task's title follows. "Stop" initially.
  void setAbortText(std::string text);

  platform::CGSize intrinsicContentSize() const override;
  void resizeSubviewsWithOldSize(platform::CGSize oldSize) override;

 private:
  friend class ShownTask;
  struct Task {
    TaskDescription description;
    std::string key;  // in the monitor: the title, with a number where another task has it
    bool isAborted = false;
  };
  void setPosition(std::uint64_t number, double position);
  void end(std::uint64_t number);
  void abortOldest();
  void showOldest();
  void place();

  platform::Ref<TessalunaUIKit::ProgressMonitorView> monitor_;
  platform::Ref<platform::NSTextField> title_;
  platform::Ref<platform::NSButton> abort_;
  std::string abortText_ = "Stop";
  std::map<std::uint64_t, Task> tasks_;  // in their order
  std::uint64_t lastNumber_ = 0;
};

}  // namespace tessaluna::ready
