// A small window with a field and a button, and the field's completion pop-up, as assistive clients find them through Qt.
#pragma once

#include <QAccessible>
#include <QWindow>
#include <string>
#include <vector>

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtNativeWindow.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"
#include "tests/harness/accessibleCells.h"

namespace harness {

class AccessiblePlayer {
 public:
  AccessiblePlayer() {
    window->setTitle("Player");
    window->contentView()->addSubview(box);
    box->addSubview(field);
    box->addSubview(button);
    button->setTitle("Play");
    button->setAction("clicked:");
    field->setCell(tessaluna::platform::make<TessalunaUIKit::SuggestibleTextFieldCell>("query"));
    static_cast<tessaluna::platform::NSTextFieldCell&>(*field->cell()).setEditable(true);
    field->setAction("clicked:");
    tessaluna::platform::NSNib::registerFactory(
        "row", [](tessaluna::platform::NSObject& owner) -> tessaluna::platform::Ref<tessaluna::platform::NSObject> {
          auto& item = dynamic_cast<TessalunaUIKit::SuggestionItemViewController&>(owner);
          const auto row =
              tessaluna::platform::make<TessalunaUIKit::HighlightingView>(tessaluna::platform::CGRect{0, 0, 50, 20});
          const auto label = tessaluna::platform::NSTextField::labelWithString("");
          const auto detail = tessaluna::platform::NSTextField::labelWithString("");
          label->setFrame({4, 2, 90, 16});
          detail->setFrame({100, 2, 90, 16});
          item.setLabelTextField(label);
          item.setDetailedLabelTextField(detail);
          row->addSubview(label);
          row->addSubview(detail);
          return row;
        });
    controller->setSuggestionPrototype("row");
  }
  ~AccessiblePlayer() { controller->cancelSuggestions(); }

  // Receives "clicked:" from the button and the field.
  void setTarget(const tessaluna::platform::Ref<tessaluna::platform::NSObject>& target) {
    button->setTarget(target);
    field->setTarget(target);
  }
  void suggest(const std::vector<std::string>& labels) {
    std::vector<TessalunaUIKit::Suggestion> all;
    for (const std::string& label : labels) all.emplace_back(label, std::nullopt, "by " + label, std::nullopt);
    controller->setSuggestions(all);
  }
  void begin(const std::vector<std::string>& labels) {
    suggest(labels);
    controller->beginForTextField(field);
  }

  static QAccessibleInterface* of(const tessaluna::platform::Ref<tessaluna::platform::NSObject>& element) {
    return tessaluna::backend::qt::QtBackend::accessibility()->interfaceOf(element);
  }
  static QWindow& qWindowOf(const tessaluna::platform::NSWindow& window) {
    return *dynamic_cast<tessaluna::backend::qt::QtNativeWindow&>(*window.nativeWindow()).qWindow();
  }
  QAccessibleInterface* root() const { return QAccessible::queryAccessibleInterface(&qWindowOf(*window)); }
  QAccessibleInterface* list() const { return of(field->cell())->child(0); }

  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window = tessaluna::platform::make<tessaluna::platform::NSWindow>(
      tessaluna::platform::CGRect{100, 200, 300, 160}, tessaluna::platform::NSWindowStyleMaskTitled,
      tessaluna::platform::NSBackingStoreBuffered, true);
  tessaluna::platform::Ref<tessaluna::platform::NSView> box =
      tessaluna::platform::make<tessaluna::platform::NSView>(tessaluna::platform::CGRect{0, 40, 300, 120});
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> field =
      tessaluna::platform::make<tessaluna::platform::NSTextField>(tessaluna::platform::CGRect{10, 20, 200, 24});
  tessaluna::platform::Ref<tessaluna::platform::NSButton> button =
      tessaluna::platform::make<tessaluna::platform::NSButton>(tessaluna::platform::CGRect{10, 60, 80, 24});
  tessaluna::platform::Ref<TessalunaUIKit::SuggestionsWindowController> controller =
      tessaluna::platform::make<TessalunaUIKit::SuggestionsWindowController>();
};

}  // namespace harness
