// What sends an action: a control, or an item of a menu. The action is a selector's name, which a target or the responder
// chain performs, or a function of the program's own:
//   next->setTarget(player); next->setAction("next:");
//   next->setAction([this] { player_.next(); });
// The mouse, keys, a row of a pop-up and assistive clients send it alike.
//
// The sender keeps its function until it gets another action or is destroyed. A call that has begun keeps the function, too, so it
// may release the sender or replace itself. If it keeps the sender alive by a Ref, neither is ever destroyed. An exception passes
// through the sender to whoever sent the event; Qt lets none through its event loop, so in a Qt program catch inside the function.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class ActionSender {
 public:
  // Not kept alive; null: the responder chain. While the action is a function the getter gives an object of the sender's own,
  // which has the selector action(), and the target that was set waits for the next selector.
  Ref<NSObject> target() const { return function_ ? function_ : target_.lock(); }
  void setTarget(const Ref<NSObject>& target) { target_ = target; }
  const std::string& action() const { return action_; }  // empty for none
  void setAction(std::string selector);
  void setAction(std::function<void()> function);
  void setAction(std::nullptr_t) { setAction(std::string()); }
  // Target and action of another sender; both share its function. So do the items of a pop-up cell and of its copy.
  void takeActionFrom(const ActionSender& other) { *this = other; }

  // Gets one line for each action that nobody performs, or whose target was destroyed, when it is sent. Without one, debug builds
  // write it to standard error. Null restores that.
  static void setUnansweredActionHandler(std::function<void(const std::string& line)> handler);

 protected:
  ActionSender() = default;
  ActionSender(const ActionSender&) = default;
  ActionSender& operator=(const ActionSender&) = default;
  ~ActionSender() = default;
  // Performs the action at the target, or without one along the responder chain. False if nobody has it. The sender may be
  // destroyed afterwards.
  bool send(std::string_view action, const Ref<NSObject>& target, NSObject& sender) const;

 private:
  std::string action_;
  WeakRef<NSObject> target_;
  Ref<NSObject> function_;  // null while the action is a selector
};

}  // namespace tessaluna::platform
