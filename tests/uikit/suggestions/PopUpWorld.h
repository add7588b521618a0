// A window with a search field, a controller, and rows whose every change is written down.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/suggestions/HighlightingView.h"
#include "tessaluna/uikit/suggestions/SuggestibleTextFieldCell.h"
#include "tessaluna/uikit/suggestions/SuggestionsContentView.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace harness {

using Calls = std::vector<std::string>;

// Writes down each background style that it is given.
class ProbeCell : public tessaluna::platform::NSTextFieldCell {
 public:
  ProbeCell(std::string name, Calls& calls) : name_(std::move(name)), calls_(calls) {}
  void setBackgroundStyle(tessaluna::platform::NSBackgroundStyle style) override {
    calls_.push_back(name_ + " style " + std::to_string(style));
    NSTextFieldCell::setBackgroundStyle(style);
    if (onStyle) onStyle();
  }
  void setObjectValue(tessaluna::platform::Ref<tessaluna::platform::NSObject> value) override {
    NSTextFieldCell::setObjectValue(std::move(value));
    if (onValue) onValue();
  }
  std::function<void()> onStyle, onValue;

 private:
  std::string name_;
  Calls& calls_;
};

// A field whose editing the test decides.
class ProbeField : public tessaluna::platform::NSTextField {
 public:
  using NSTextField::NSTextField;
  tessaluna::platform::Ref<tessaluna::platform::NSText> editor;
  Calls calls;
  tessaluna::platform::Ref<tessaluna::platform::NSText> currentEditor() const override { return editor; }
  void validateEditing() override { calls.push_back("validateEditing"); }
  bool abortEditing() override {
    calls.push_back("abortEditing");
    return false;
  }
  bool sendActionTo(std::string_view action,
                    const tessaluna::platform::Ref<tessaluna::platform::NSObject>& target) override {
    calls.push_back("sendAction " + std::string(action) + (target ? " to a target" : " to nobody"));
    if (onAction) onAction();
    return NSTextField::sendActionTo(action, target);
  }
  std::function<void()> onAction;
};

struct ProbeTarget : TessalunaUIKit::SuggestionsWindowTarget {
  Calls calls;
  std::function<void()> onCall;
  void suggestionSelectionChanged(std::optional<TessalunaUIKit::Suggestion> suggestion) override {
    calls.push_back(suggestion ? suggestion->label : "none");
    if (onCall) onCall();
  }
};

class PopUpWorld : public StillWorld {
 protected:
  template <class T>
  using Ref = tessaluna::platform::Ref<T>;
  using Controller = TessalunaUIKit::SuggestionsWindowController;
  using Row = TessalunaUIKit::HighlightingView;

  PopUpWorld() {
    field->setCell(tessaluna::platform::make<TessalunaUIKit::SuggestibleTextFieldCell>("query"));
    field->setAction("search:");
    window->contentView()->addSubview(field);
    tessaluna::platform::NSNib::registerFactory("row",
                                                [this](tessaluna::platform::NSObject& owner) { return makeRow(owner); });
    controller->setSuggestionPrototype("row");
    controller->setTarget(target);
  }
  ~PopUpWorld() override { controller->cancelSuggestions(); }

  // A row of the height `rowHeight` with one text field.
  Ref<tessaluna::platform::NSObject> makeRow(tessaluna::platform::NSObject& owner) {
    auto row = tessaluna::platform::make<Row>(tessaluna::platform::CGRect{0, 0, 50, rowHeight});
    auto label = tessaluna::platform::make<tessaluna::platform::NSTextField>(tessaluna::platform::CGRect{0, 0, 50, 10});
    label->setCell(tessaluna::platform::make<ProbeCell>("row " + std::to_string(items.size()), styleCalls));
    row->addSubview(label);
    cells.push_back(std::dynamic_pointer_cast<ProbeCell>(label->cell()));
    if (onMake) onMake(*row, *cells.back());
    auto& item = dynamic_cast<TessalunaUIKit::SuggestionItemViewController&>(owner);
    item.setLabelTextField(label);
    items.push_back(tessaluna::platform::refTo(item));
    return row;
  }

  static std::vector<TessalunaUIKit::Suggestion> suggestionsNamed(const Calls& labels) {
    std::vector<TessalunaUIKit::Suggestion> result;
    for (const std::string& label : labels) result.emplace_back(label, std::nullopt);
    return result;
  }
  static std::vector<TessalunaUIKit::Suggestion> suggestionsCounting(int count) {
    Calls labels;
    for (int i = 0; i < count; ++i) labels.push_back(std::to_string(i));
    return suggestionsNamed(labels);
  }
  // A visible pop-up with the rows.
  void show(const Calls& labels) {
    controller->setSuggestions(suggestionsNamed(labels));
    controller->beginForTextField(field);
    desktop.settle();
    styleCalls.clear();
    target->calls.clear();
  }
  Ref<Row> row(std::size_t index) { return std::dynamic_pointer_cast<Row>(items.at(index)->view()); }
  Ref<tessaluna::platform::NSWindow> popUp() { return controller->window(); }
  Ref<tessaluna::platform::NSScrollView> scrollView() {
    return std::dynamic_pointer_cast<tessaluna::platform::NSScrollView>(popUp()->contentView());
  }
  Ref<tessaluna::platform::NSView> content() { return scrollView()->documentView(); }
  // The labels of what the controller holds; "none" where it holds nothing.
  Calls heldLabels() {
    if (!controller->suggestions()) return {"none"};
    Calls labels;
    for (const TessalunaUIKit::Suggestion& suggestion : *controller->suggestions()) labels.push_back(suggestion.label);
    return labels;
  }
  std::string selectedLabel() {
    const auto suggestion = controller->selectedSuggestion();
    return suggestion ? suggestion->label : "none";
  }

  // Whether a press in the field's window gets past the pop-up's monitor.
  bool isPassed(tessaluna::platform::CGPoint point) {
    using namespace tessaluna::platform;
    bool isPassed = false;
    const Ref<NSObject> token = NSEvent::addLocalMonitorForEventsMatchingMask(
        NSEventMaskAny, [&](const Ref<NSEvent>&) { return isPassed = true, nullptr; });
    NSApp->sendEvent(
        make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseDown, .location = point, .window = window}));
    NSEvent::removeMonitor(token);
    return isPassed;
  }

  tessaluna::platform::CGFloat rowHeight = 20;
  Calls styleCalls;
  std::vector<Ref<TessalunaUIKit::SuggestionItemViewController>> items;  // all that were ever made
  std::vector<Ref<ProbeCell>> cells;                                     // those of their labels
  std::function<void(Row&, ProbeCell&)> onMake;
  Ref<tessaluna::platform::NSWindow> window = showWindow({100, 300, 400, 300});
  Ref<ProbeField> field = tessaluna::platform::make<ProbeField>(tessaluna::platform::CGRect{50, 100, 200, 24});
  Ref<ProbeTarget> target = std::make_shared<ProbeTarget>();
  Ref<Controller> controller = tessaluna::platform::make<Controller>();
};

}  // namespace harness
