// A window with two text fields, and a delegate and a target that record their notifications.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {

inline void PrintTo(NSRange r, std::ostream* out) { *out << "{" << r.location << ", " << r.length << "}"; }

}  // namespace tessaluna::platform

namespace harness {

using Calls = std::vector<std::string>;

class ProbeFieldDelegate : public tessaluna::platform::NSObject, public tessaluna::platform::NSTextFieldDelegate {
 public:
  Calls calls;
  bool refusesToBegin = false, refusesToEnd = false;
  std::function<bool(std::string_view)> onCommand;
  std::function<void()> onBegin, onChange, onEnd;

  void controlTextDidBeginEditing(const tessaluna::platform::Ref<tessaluna::platform::NSNotification>&) override {
    calls.push_back("begin");
    if (onBegin) onBegin();
  }
  void controlTextDidChange(const tessaluna::platform::Ref<tessaluna::platform::NSNotification>& notification) override {
    calls.push_back("change " + dynamic_cast<tessaluna::platform::NSTextField&>(*notification->object()).stringValue());
    if (onChange) onChange();
  }
  void controlTextDidEndEditing(const tessaluna::platform::Ref<tessaluna::platform::NSNotification>&) override {
    calls.push_back("end");
    if (onEnd) onEnd();
  }
  bool controlTextShouldBeginEditing(tessaluna::platform::NSControl&, tessaluna::platform::NSText&) override {
    return !refusesToBegin;
  }
  bool controlTextShouldEndEditing(tessaluna::platform::NSControl&, tessaluna::platform::NSText&) override {
    return !refusesToEnd;
  }
  bool controlTextViewDoCommandBySelector(tessaluna::platform::NSControl&, tessaluna::platform::NSTextView&,
                                          std::string_view selector) override {
    calls.push_back(std::string(selector));
    return onCommand && onCommand(selector);
  }
};

class ProbeFieldTarget : public tessaluna::platform::NSObject {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }
  void search(tessaluna::platform::NSObject* sender) {
    values.push_back(dynamic_cast<tessaluna::platform::NSTextField&>(*sender).stringValue());
    if (onAction) onAction();
  }
  Calls values;
  std::function<void()> onAction;
};

inline constexpr tessaluna::platform::Selector probeFieldTargetSelectors[] = {
    tessaluna::platform::action<&ProbeFieldTarget::search>("search:")};
inline const tessaluna::platform::ClassInfo ProbeFieldTarget::staticClassInfo{
    .name = "ProbeFieldTarget",
    .base = &tessaluna::platform::NSObject::staticClassInfo,
    .selectors = probeFieldTargetSelectors};

// A character of the fields' font is 6.5 points wide and a line 15.6 high; their text starts 7 points from the left.
class FieldWorld : public StillWorld {
 protected:
  FieldWorld() {
    for (const auto& each : {field, other}) window->contentView()->addSubview(each);
    field->setDelegate(delegate);
    field->setTarget(target);
    field->setAction("search:");
    desktop.settle();
  }

  // The editor of the first field, in which editing must have begun.
  tessaluna::platform::Ref<tessaluna::platform::NSTextView> editor() const {
    return std::dynamic_pointer_cast<tessaluna::platform::NSTextView>(field->currentEditor());
  }
  void begin(std::string_view text = "") {
    field->setStringValue(text);
    field->selectText(nullptr);
    delegate->calls.clear();
  }
  // The same with the caret at the index.
  void begin(std::string_view text, std::size_t caret) {
    begin(text);
    editor()->setSelectedRange({caret, 0});
  }
  // In the window: where the caret is at the index of a text that is not scrolled, in the middle of the line's height.
  static tessaluna::platform::CGPoint placeOf(std::size_t index) {
    return {20 + 7 + 6.5 * static_cast<double>(index), 100 + 12};
  }

  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window = showWindow();
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> field =
      tessaluna::platform::make<tessaluna::platform::NSTextField>(tessaluna::platform::CGRect{20, 100, 110, 24});
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> other =
      tessaluna::platform::make<tessaluna::platform::NSTextField>(tessaluna::platform::CGRect{20, 60, 110, 24});
  tessaluna::platform::Ref<ProbeFieldDelegate> delegate = tessaluna::platform::make<ProbeFieldDelegate>();
  tessaluna::platform::Ref<ProbeFieldTarget> target = tessaluna::platform::make<ProbeFieldTarget>();
};

}  // namespace harness
