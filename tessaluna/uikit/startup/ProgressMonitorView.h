// Shows a host's long background tasks as one thin bar, filled by the sum of all positions against the sum of all lengths, with
// their number beside it where there are several. A task is added under a key, moved forward, and removed; a task that is done
// stays until then. The view is hidden while there is nothing to show.
//
// For each task there is a record, an NSDictionary that is replaced and never changed:
//
//   "Length"    NSNumber, the task's length in a unit that all tasks share
//   "Pos"       NSNumber, how far it has got, from 0
//   "abortSem"  NSData of the bytes of a pointer, which the host has given and may read. What it points to is not kept alive.
//
// Everything is called on the main thread.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/NSDictionary.h"
#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tessaluna/platform/views/NSTextField.h"

namespace TessalunaUIKit {

class ProgressMonitorView : public tessaluna::platform::NSView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // Hidden, whatever an archive says. Bar and label are placed in the frame as it is now.
  explicit ProgressMonitorView(tessaluna::platform::CGRect frame) : NSView(frame) {}
  explicit ProgressMonitorView(tessaluna::platform::NSCoder& coder) : NSView(coder) {}
  void didInit() override;

  // Shows the view. For a key that exists already only the length changes: position and semaphore stay.
  void addBackgroundTaskProgress(std::string_view task, double totalLength, const void* abortSem);
  // An unknown task is ignored.
  void setBackgroundTaskProgressPosition(double position, std::string_view forTask);
  // Hides the view if the tasks that remain have no length in sum, even if there are some; for an unknown task, too.
  void removeBackgroundTaskProgress(std::string_view task);

  // The records by the tasks' keys: the view's own dictionary, in which later changes show.
  const tessaluna::platform::Ref<tessaluna::platform::NSMutableDictionary>& backgroundTasks() const {
    return backgroundTasks_;
  }

  // An addition: to assistive clients the view is a group called "2 tasks, 40 percent", with a progress indicator for each
  // task, called by its key, with its position and length. Each lives as long as its task.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(tessaluna::platform::NSAccessibilityGroupRole); }
  std::string accessibilityTitle() const override;

 protected:
  std::optional<tessaluna::platform::AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  class TaskElement;
  tessaluna::platform::Ref<tessaluna::platform::NSDictionary> recordOf(std::string_view task) const;
  void replaceValue(const tessaluna::platform::NSDictionary& record, std::string_view name, double value,
                    std::string_view task);
  double sumOf(std::string_view name) const;
  void showTotals();
  void showCount();
  void notifyAssistiveClients(std::string_view task);

  tessaluna::platform::Ref<tessaluna::platform::NSProgressIndicator> progressIndicator_;
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> numberTasks_;
  tessaluna::platform::Ref<tessaluna::platform::NSMutableDictionary> backgroundTasks_;
  mutable std::map<std::string, tessaluna::platform::Ref<TaskElement>, std::less<>> elements_;  // made when asked for
};

}  // namespace TessalunaUIKit
