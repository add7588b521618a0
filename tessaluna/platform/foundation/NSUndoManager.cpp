#include "tessaluna/platform/foundation/NSUndoManager.h"

#include <utility>

#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::platform {

const ClassInfo NSUndoManager::staticClassInfo{.name = "NSUndoManager", .base = &NSObject::staticClassInfo};

void NSUndoManager::registerUndo(std::function<void()> action) {
  removeRedoActions();
  group_.push_back(std::move(action));
  if (depth_ == 0) {
    ++depth_;
    endUndoGrouping();
  }
}

void NSUndoManager::beginUndoGrouping() { ++depth_; }

void NSUndoManager::endUndoGrouping() {
  if (depth_ == 0 || --depth_ > 0 || group_.empty()) return;
  (state_ == State::Undoing ? redo_ : undo_).push_back(std::exchange(group_, {}));
}

void NSUndoManager::undo() {
  if (state_ != State::Resting) return;
  if (depth_ > 1) stopProgram("NSUndoManager: undo was asked for within a group that is in another one");
  endUndoGrouping();
  perform(undo_, State::Undoing);
}
void NSUndoManager::redo() { perform(redo_, State::Redoing); }

void NSUndoManager::perform(std::vector<Step>& steps, State state) {
  if (steps.empty() || state_ != State::Resting || depth_ > 0) return;
  const Ref<NSObject> held = shared_from_this();
  const Step step = std::move(steps.back());
  steps.pop_back();
  state_ = state;
  beginUndoGrouping();
  const AtEndOfScope end([this] {
    endUndoGrouping();
    state_ = State::Resting;
  });
  for (auto action = step.rbegin(); action != step.rend(); ++action) (*action)();
}

void NSUndoManager::removeAllActions() {
  undo_.clear();
  redo_.clear();
  group_.clear();
}

void NSUndoManager::removeRedoActions() {
  if (state_ == State::Resting) redo_.clear();
}

}  // namespace tessaluna::platform
