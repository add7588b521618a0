#include "tessaluna/platform/events/ActionSender.h"

#include "tessaluna/platform/foundation/WarningHandler.h"
#include "tessaluna/platform/menus/NSMenuItem.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"

namespace tessaluna::platform {

namespace {

// The target of an action that is a function.
class FunctionTarget : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit FunctionTarget(std::function<void()> function) : function_(std::move(function)) {}

 private:
  static const Selector selectors_[];
  void call(NSObject*) { function_(); }

  std::function<void()> function_;
};

constexpr std::string_view functionAction = "_callFunction:";

const Selector FunctionTarget::selectors_[] = {tessaluna::platform::action<&FunctionTarget::call>(functionAction)};
const ClassInfo FunctionTarget::staticClassInfo{
    .name = "FunctionTarget", .base = &NSObject::staticClassInfo, .selectors = selectors_};

WarningHandler& unansweredActionHandler() {
  static WarningHandler handler;
  return handler;
}

// NSButton "play", or NSMenuItem "Play".
std::string nameOf(const NSObject& sender) {
  std::string name;
  if (const auto* view = dynamic_cast<const NSView*>(&sender)) name = view->identifier();
  else if (const auto* item = dynamic_cast<const NSMenuItem*>(&sender)) name = item->title();
  return sender.className() + (name.empty() ? "" : " \"" + name + "\"");
}

// One that was set and has gone, other than one that never was.
bool hasGone(const WeakRef<NSObject>& target) {
  const WeakRef<NSObject> none;
  return target.expired() && (target.owner_before(none) || none.owner_before(target));
}

}  // namespace

void ActionSender::setAction(std::string selector) {
  action_ = std::move(selector);
  function_ = nullptr;
}

void ActionSender::setAction(std::function<void()> function) {
  if (!function) return setAction(std::string());
  action_ = functionAction;
  function_ = make<FunctionTarget>(std::move(function));
}

void ActionSender::setUnansweredActionHandler(std::function<void(const std::string& line)> handler) {
  unansweredActionHandler().set(std::move(handler));
}

bool ActionSender::send(std::string_view action, const Ref<NSObject>& target, NSObject& sender) const {
  if (action.empty()) return false;
  // All that a warning needs, since the action may let the sender go.
  const bool isTargetGone = !target && hasGone(target_) && action == action_;
  const Ref<NSObject> held = sender.shared_from_this();
  const std::string selector(action);
  const bool isPerformed = NSApp    ? NSApp->sendAction(selector, target.get(), &sender)
                           : target ? target->performSelector(selector, &sender)
                                    : false;
  if (isTargetGone) unansweredActionHandler().warn(nameOf(sender) + ": the target of " + selector + " has gone");
  else if (!isPerformed) unansweredActionHandler().warn(nameOf(sender) + ": nobody performs " + selector);
  return isPerformed;
}

}  // namespace tessaluna::platform
