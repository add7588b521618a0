// A small window with a field and a button, and the field's completion pop-up, as assistive clients meet them through Qt.
#pragma once

#include <QAccessible>
#include <QWindow>
#include <string>
#include <vector>

#include "backends/qt/AccessibilityBridge.h"
#include "backends/qt/QtBackend.h"
#include "backends/qt/QtNativeWindow.h"
#include "platform/interface_files/NSNib.h"
#include "platform/views/NSButton.h"
#include "platform/windows/NSWindow.h"
#include "uikit/suggestions/SuggestionsWindowController.h"

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
    field->setCell(platform::make<TessalunaUIKit::SuggestibleTextFieldCell>("query"));
    static_cast<platform::NSTextFieldCell&>(*field->cell()).setEditable(true);
    field->setAction("clicked:");
    platform::NSNib::registerFactory("row", [](platform::NSObject& owner) -> platform::Ref<platform::NSObject> {
      auto& item = dynamic_cast<TessalunaUIKit::SuggestionItemViewController&>(owner);
      const auto row = platform::make<TessalunaUIKit::HighlightingView>(platform::CGRect{0, 0, 50, 20});
      const auto label = platform::NSTextField::labelWithString("");
      const auto detail = platform::NSTextField::labelWithString("");
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

  // Gets "clicked:" of the button and of the field.
  void setTarget(const platform::Ref<platform::NSObject>& target) {
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

  static QAccessibleInterface* of(const platform::Ref<platform::NSObject>& element) {
    return backend::qt::QtBackend::accessibility()->interfaceOf(element);
  }
  static QWindow& qWindowOf(const platform::NSWindow& window) {
    return *dynamic_cast<backend::qt::QtNativeWindow&>(*window.nativeWindow()).qWindow();
  }
  QAccessibleInterface* root() const { return QAccessible::queryAccessibleInterface(&qWindowOf(*window)); }
  QAccessibleInterface* list() const { return of(field->cell())->child(0); }

  platform::Ref<platform::NSWindow> window = platform::make<platform::NSWindow>(
      platform::CGRect{100, 200, 300, 160}, platform::NSWindowStyleMaskTitled, platform::NSBackingStoreBuffered, true);
  platform::Ref<platform::NSView> box = platform::make<platform::NSView>(platform::CGRect{0, 40, 300, 120});
  platform::Ref<platform::NSTextField> field = platform::make<platform::NSTextField>(platform::CGRect{10, 20, 200, 24});
  platform::Ref<platform::NSButton> button = platform::make<platform::NSButton>(platform::CGRect{10, 60, 80, 24});
  platform::Ref<TessalunaUIKit::SuggestionsWindowController> controller =
      platform::make<TessalunaUIKit::SuggestionsWindowController>();
};

// A cell with a value between bounds, such as a slider's.
class QuantityCell : public platform::NSCell {
 public:
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(platform::NSAccessibilitySliderRole); }
  platform::AccessibilityValue accessibilityValue() const override { return value; }
  platform::AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == platform::NSAccessibilityMinValueAttribute) return 0.0;
    if (attribute == platform::NSAccessibilityMaxValueAttribute) return 10.0;
    return platform::NSCell::accessibilityAttributeValue(attribute);
  }
  void accessibilitySetValue(const platform::AccessibilityValue& wanted, std::string_view attribute) override {
    if (attribute == platform::NSAccessibilityValueAttribute && wanted.as<double>()) value = *wanted.as<double>();
  }
  double value = 4;
};

// A text with a selection, as a field has while it is edited.
class SelectingCell : public platform::NSTextFieldCell {
 public:
  SelectingCell() : platform::NSTextFieldCell("some words") { setEditable(true); }
  platform::AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == platform::NSAccessibilitySelectedTextRangeAttribute) return range;
    return platform::NSTextFieldCell::accessibilityAttributeValue(attribute);
  }
  void accessibilitySetValue(const platform::AccessibilityValue& value, std::string_view attribute) override {
    if (attribute != platform::NSAccessibilitySelectedTextRangeAttribute)
      return platform::NSTextFieldCell::accessibilitySetValue(value, attribute);
    range = *value.as<platform::NSRange>();
  }
  platform::NSRange range{5, 5};
};

}  // namespace harness
