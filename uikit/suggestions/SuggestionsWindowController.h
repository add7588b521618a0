// Runs the completion pop-up of a search field: a child window that hangs below a text field, as wide as it, with one row for
// each suggestion.
//
//   make<SuggestionsWindowController>()
//   setSuggestionPrototype("row"); setTarget(host);   once
//   beginForTextField(field);                         typing starts
//   setSuggestions(matches);                          results arrive
//   moveUp(nullptr), moveDown(nullptr)                the host's arrow keys
//   parentControlMoved();                             the field's window moved
//   cancelSuggestions();                              done; also before a second begin, and before the controller goes
//
// The pop-up ends by itself with a click elsewhere, when a row was chosen with the mouse, and when the field's window loses
// the key status. A chosen row sends the field's own action.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/views/NSTextField.h"
#include "platform/windows/NSWindowController.h"
#include "uikit/suggestions/HighlightingView.h"
#include "uikit/suggestions/SuggestionItemViewController.h"
#include "uikit/suggestions/SuggestionsWindow.h"
#include "uikit/suggestions/SuggestionsWindowTarget.h"

namespace TessalunaUIKit {

class SuggestionsWindowController : public platform::NSWindowController {
 public:
  using Suggestion = TessalunaUIKit::Suggestion;
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  SuggestionsWindowController();
  explicit SuggestionsWindowController(platform::NSCoder& coder);  // has nothing to show
  explicit SuggestionsWindowController(platform::Ref<platform::NSWindow> window);  // not supported: stops the program

  // Told of what the user selects; not kept alive.
  platform::Ref<SuggestionsWindowTarget> target() const { return target_.lock(); }
  void setTarget(const platform::Ref<SuggestionsWindowTarget>& target) { target_ = target; }
  // The interface file of one row.
  const std::optional<std::string>& suggestionPrototype() const { return suggestionPrototype_.optional(); }
  void setSuggestionPrototype(std::string name) { suggestionPrototype_ = std::move(name); }
  // The rows to show. A visible pop-up is laid out again, with all rows made anew and the first one selected, which nobody is
  // told; another one at the next begin.
  const std::optional<std::vector<Suggestion>>& suggestions() const { return suggestions_; }
  void setSuggestions(std::optional<std::vector<Suggestion>> suggestions);

  // The selected row. The first operation tells nobody, the second one the target. Setting the row that is selected already
  // selects it anew. A present view in a controller from a coder stops the program.
  const platform::Ref<HighlightingView>& selectedView() const { return selectedView_; }
  void setSelectedView(platform::Ref<HighlightingView> view);
  void userSetSelectedView(platform::Ref<HighlightingView> view);
  // That of the selected row; absent without one.
  std::optional<Suggestion> selectedSuggestion() const;
  // Selects the first row with 0, and does nothing with more. A negative index clears the selection while there was never
  // a layout, and stops the program after one.
  void setSelectedSuggestionIndex(std::int64_t index);
  // Without a selection, and at the ends, nothing happens.
  void moveUp(platform::NSObject* sender);
  void moveDown(platform::NSObject* sender);

  // The field stands in a window, or the program stops.
  void beginForTextField(const platform::Ref<platform::NSTextField>& field);
  // Brings a visible pop-up back under its field, cut off at the lower edge of the screen.
  void parentControlMoved();
  // Rows, selection and suggestions stay.
  void cancelSuggestions();

  // Of the rows' tracking areas, which belong to the controller, and of the rows, at the end of whose responder chain it is.
  void mouseEntered(const platform::Ref<platform::NSEvent>& event) override;
  void mouseExited(const platform::Ref<platform::NSEvent>& event) override;
  void mouseUp(const platform::Ref<platform::NSEvent>& event) override;

  // The key of a tracking area's user info that holds the row.
  static std::string_view trackerKey() { return "whichImageView"; }

 private:
  using ItemRef = platform::Ref<SuggestionItemViewController>;
  static const platform::Selector selectors_[];

  void changeSelection(platform::Ref<HighlightingView> view);
  template <class Iterator>
  void selectBefore(Iterator first, Iterator last);
  void layoutSuggestions();
  platform::Ref<platform::NSTrackingArea> trackingAreaForView(const platform::Ref<HighlightingView>& view);
  platform::CGPoint locationBelow(const platform::NSTextField& field, platform::NSWindow& fieldWindow) const;
  void installMonitorAndObserver(const platform::Ref<SuggestionsWindow>& popUp,
                                 const platform::Ref<platform::NSWindow>& parent,
                                 const platform::Ref<platform::NSTextField>& field);
  platform::Ref<platform::NSEvent> mouseWentDown(const platform::Ref<platform::NSEvent>& event,
                                                 const platform::Ref<SuggestionsWindow>& popUp,
                                                 const platform::Ref<platform::NSWindow>& parent,
                                                 const platform::Ref<platform::NSTextField>& field);

  platform::WeakRef<SuggestionsWindowTarget> target_;
  platform::Required<std::string> suggestionPrototype_{"suggestionPrototype"};
  std::optional<std::vector<Suggestion>> suggestions_;
  bool needsLayoutUpdate_ = false;  // wanted: written and never read
  platform::Required<platform::Ref<platform::NSView>> fullContentView_{"fullContentView"};
  std::optional<std::vector<ItemRef>> viewControllers_;
  std::optional<std::vector<platform::Ref<platform::NSTrackingArea>>> trackingAreas_;
  platform::Ref<HighlightingView> selectedView_;
  platform::Ref<platform::NSTextField> parentTextField_;
  platform::Ref<platform::NSObject> localMouseDownEventMonitor_, lostFocusObserver_;
};

}  // namespace TessalunaUIKit
