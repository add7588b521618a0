// The host of a search field with a completion pop-up: it finds what matches, hands it to the pop-up's controller, and passes
// on the keys that are the pop-up's. This is what a player writes around the kit's pop-up.
//
//   typing        SearchIndex finds the best matches, the pop-up shows them, the first one is selected
//   up and down   move the selection; the field shows the label of the selected row
//   Return        takes the selected row; Escape brings back what was typed
//   the mouse     does the same through the pop-up itself: pointing shows, a click takes
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "gallery/search/SearchIndex.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

namespace gallery {

class SearchHost : public tessaluna::platform::NSObject,
                   public tessaluna::platform::NSTextFieldDelegate,
                   public TessalunaUIKit::SuggestionsWindowTarget {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit SearchHost(std::vector<LibraryItem> items);
  void didInit() override;
  ~SearchHost() override;

  // What is embedded: a view with the field in it, of a height that stays and any width.
  const tessaluna::platform::Ref<tessaluna::platform::NSView>& view() const { return view_; }
  const tessaluna::platform::Ref<tessaluna::platform::NSTextField>& field() const { return field_; }
  const tessaluna::platform::Ref<TessalunaUIKit::SuggestionsWindowController>& popUp() const { return popUp_; }
  // Hears of what was taken from the pop-up, or typed and sent off.
  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }

  void controlTextDidChange(const tessaluna::platform::Ref<tessaluna::platform::NSNotification>& notification) override;
  void controlTextDidEndEditing(const tessaluna::platform::Ref<tessaluna::platform::NSNotification>& notification) override;
  bool controlTextViewDoCommandBySelector(tessaluna::platform::NSControl& field, tessaluna::platform::NSTextView& editor,
                                          std::string_view selector) override;
  void suggestionSelectionChanged(std::optional<TessalunaUIKit::Suggestion> suggestion) override;

  // The field's action: Return, or a click on a row.
  void search(tessaluna::platform::NSObject* sender);

 private:
  static const tessaluna::platform::Selector selectors_[];
  bool isOpen() const { return popUp_->window()->isVisible(); }
  void showMatches();
  void close();
  void putBelowField();
  void moveSelection(void (TessalunaUIKit::SuggestionsWindowController::*move)(tessaluna::platform::NSObject*));
  void showInField(std::string_view text);
  std::vector<TessalunaUIKit::Suggestion> suggestionsFor(std::string_view query) const;

  std::vector<LibraryItem> items_;
  SearchIndex index_;
  tessaluna::platform::Ref<tessaluna::platform::NSView> view_;
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> field_;
  tessaluna::platform::Ref<TessalunaUIKit::SuggestionsWindowController> popUp_;
  std::string typed_;
  std::optional<TessalunaUIKit::Suggestion> selected_;  // whose label the field shows
  std::vector<tessaluna::platform::Ref<tessaluna::platform::NSObject>> windowObservers_;
  std::function<void(const std::string&)> report_;
};

}  // namespace gallery
