// What can be taken back. Whoever changes something registers what undoes it; what is registered while an undo runs can be
// redone. Each registration is a step of its own, except between beginUndoGrouping and endUndoGrouping.
#pragma once

#include <functional>
#include <vector>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSUndoManager : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // What was undone can no longer be redone afterwards, unless this is part of an undo or redo.
  void registerUndo(std::function<void()> action);
  void beginUndoGrouping();
  void endUndoGrouping();

  // A group that is open counts.
  bool canUndo() const { return !undo_.empty() || (state_ == State::Resting && !group_.empty()); }
  bool canRedo() const { return !redo_.empty(); }
  // Neither does anything while the other, or itself, runs. undo() ends a group that is open first; a group within a group stops
  // the program. redo() does nothing within a group.
  void undo();
  void redo();
  bool isUndoing() const { return state_ == State::Undoing; }
  bool isRedoing() const { return state_ == State::Redoing; }
  void removeAllActions();
  // An addition: what was undone can no longer be redone, as after a change that nobody registers. Nothing while an undo or
  // redo runs.
  void removeRedoActions();

 private:
  enum class State { Resting, Undoing, Redoing };
  using Step = std::vector<std::function<void()>>;
  void perform(std::vector<Step>& steps, State state);

  std::vector<Step> undo_, redo_;
  Step group_;
  int depth_ = 0;  // of groups that are open
  State state_ = State::Resting;
};

}  // namespace tessaluna::platform
