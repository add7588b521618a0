// A splash and a completion pop-up of the program's own. What they show comes from interface files.
#include <QApplication>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/time/DispatchQueue.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tessaluna/uikit/startup/AppSplashController.h"
#include "tessaluna/uikit/suggestions/SuggestibleTextFieldCell.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr std::string_view splashFile = R"({
  "owner": {"window": "window", "progressIndicator": "spinner", "appIconView": "icon",
            "titleLabel": "title", "informativeTextLabel": "information", "currentStepTextLabel": "step"},
  "objects": [{"id": "window", "class": "NSWindow", "contentRect": [0, 0, 360, 110], "styleMask": 0,
    "contentView": {"class": "NSView", "subviews": [
      {"id": "icon", "class": "NSImageView", "frame": [20, 20, 64, 64]},
      {"id": "title", "class": "NSTextField", "frame": [100, 70, 200, 24],
       "properties": {"bezeled": false, "editable": false, "drawsBackground": false, "font": {"size": 18, "bold": true}}},
      {"id": "information", "class": "NSTextField", "frame": [100, 45, 240, 20],
       "properties": {"bezeled": false, "editable": false, "drawsBackground": false}},
      {"id": "step", "class": "NSTextField", "frame": [100, 20, 240, 20],
       "properties": {"bezeled": false, "editable": false, "drawsBackground": false}},
      {"id": "spinner", "class": "NSProgressIndicator", "frame": [316, 70, 24, 24], "style": "spinning"}]}}]})";

constexpr std::string_view rowFile = R"({
  "owner": {"view": "row", "labelTextField": "label"},
  "objects": [{"id": "row", "class": "TessalunaUIKit.HighlightingView", "frame": [0, 0, 200, 24], "subviews": [
    {"id": "label", "class": "NSTextField", "frame": [4, 2, 192, 20],
     "properties": {"bezeled": false, "editable": false, "drawsBackground": false}}]}]})";

}  // namespace

class Completion : public NSTextFieldDelegate, public SuggestionsWindowTarget {
 public:
  Completion(Ref<NSTextField> field, Ref<SuggestionsWindowController> popUp)
      : field_(std::move(field)), popUp_(std::move(popUp)) {}

  void controlTextDidChange(const Ref<NSNotification>&) override {
    std::vector<Suggestion> found;
    for (const char* title : {"Blue Bayou", "Blue Monday", "Silver Tide"})
      if (std::string_view(title).starts_with(field_->stringValue())) found.emplace_back(title, std::nullopt);
    if (found.empty() || field_->stringValue().empty()) return popUp_->cancelSuggestions();
    popUp_->setSuggestions(found);
    if (!popUp_->window()->isVisible()) popUp_->beginForTextField(field_);
  }
  void controlTextDidEndEditing(const Ref<NSNotification>&) override { popUp_->cancelSuggestions(); }
  bool controlTextViewDoCommandBySelector(NSControl&, NSTextView&, std::string_view command) override {
    if (!popUp_->window()->isVisible()) return false;
    if (command == "moveDown:") popUp_->moveDown(nullptr);
    else if (command == "moveUp:") popUp_->moveUp(nullptr);
    else if (command == "cancelOperation:") popUp_->cancelSuggestions();
    else return false;
    return true;
  }
  void suggestionSelectionChanged(std::optional<Suggestion> selected) override {
    if (selected) field_->setStringValue(selected->label);
  }

 private:
  const Ref<NSTextField> field_;
  const Ref<SuggestionsWindowController> popUp_;
};

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  const auto application = NSApplication::sharedApplication();

  registerInterfaceFileClasses();
  NSNib::registerDocument("Splash", splashFile);
  NSNib::registerDocument("row", rowFile);

  const auto splash = make<AppSplashController>("Splash");
  splash->showWindow(nullptr);
  splash->setTitle("Player");
  splash->setCurrentStepText("Opening the library");

  const auto field = make<NSTextField>(CGRect{0, 0, 240, 22});
  field->setCell(make<SuggestibleTextFieldCell>(""));
  field->setBezeled(true);
  field->setEditable(true);
  field->setDrawsBackground(true);
  const auto popUp = make<SuggestionsWindowController>();
  popUp->setSuggestionPrototype("row");
  const auto completion = std::make_shared<Completion>(field, popUp);
  popUp->setTarget(completion);
  field->setDelegate(completion);
  field->setAction([&] { std::printf("play %s\n", field->stringValue().c_str()); });

  tessaluna::backend::qt::QtViewWidget widget(field);
  DispatchQueue::main().asyncAfter(1, [&] {
    widget.show();
    splash->close();
  });
  return QApplication::exec();
}
