// Runs the completion pop-up of a search field: a child window that hangs below a text field, as wide as it, with one row for
// each suggestion.
//
//   make<SuggestionsWindowController>()
//   setSuggestionPrototype("row"); setTarget(host);   once
//   beginForTextField(field);                         typing starts
//   setSuggestions(matches);                          results arrive
//   moveUp(nullptr), moveDown(nullptr)                the host's arrow keys
//   parentControlMoved();                             the field's window moved
//   cancelSuggestions();                              done; also before a second begin, and before the controller is destroyed
//
// The pop-up ends by itself when a row was chosen with the mouse, when the field's window loses the key status, and with a
// press elsewhere. One in another window is still done there; one in the field's window is swallowed, or, while the field is
// not edited, is done and ends nothing. A chosen row sends the field's own action.
//
// A controller that is destroyed while its pop-up is open stops the program at the next press.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSWindowController.h"
#include "tessaluna/uikit/suggestions/HighlightingView.h"
#include "tessaluna/uikit/suggestions/SuggestionItemViewController.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindow.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowTarget.h"

namespace TessalunaUIKit {

class SuggestionsWindowController : public tessaluna::platform::NSWindowController {
 public:
  using Suggestion = TessalunaUIKit::Suggestion;
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  SuggestionsWindowController();
  explicit SuggestionsWindowController(tessaluna::platform::NSCoder& coder);  // no window: a begin stops the program
  explicit SuggestionsWindowController(
      tessaluna::platform::Ref<tessaluna::platform::NSWindow> window);  // not supported: stops the program

  // Notified of what the user selects; not kept alive.
  tessaluna::platform::Ref<SuggestionsWindowTarget> target() const { return target_.lock(); }
  void setTarget(const tessaluna::platform::Ref<SuggestionsWindowTarget>& target) { target_ = target; }
  // The interface file of one row, registered with NSNib under this name; see SuggestionItemViewController. Absent: the one
  // with the name of that class. A row whose root is not a HighlightingView stops the program.
  const std::optional<std::string>& suggestionPrototype() const { return suggestionPrototype_.optional(); }
  void setSuggestionPrototype(std::string name) { suggestionPrototype_ = std::move(name); }
  // The rows to show; absent: none. A visible pop-up, and one that is just being laid out, is laid out again, with all rows
  // made again and the first one selected, without notifying anybody; a hidden one at the next begin.
  const std::optional<std::vector<Suggestion>>& suggestions() const { return suggestions_; }
  void setSuggestions(std::optional<std::vector<Suggestion>> suggestions);

  // An addition: the pop-up is never higher than that many of its first rows; the user scrolls to the others. Absent initially:
  // then only the lower edge of the screen ends it. 0 counts as 1.
  const std::optional<std::size_t>& maximumRows() const { return maximumRows_; }
  void setMaximumRows(std::optional<std::size_t> rows);

  // The selected row. The first operation notifies nobody, the second one the target. Setting the row that is selected already
  // selects it again. In a controller from a coder a view that is not null stops the program.
  const tessaluna::platform::Ref<HighlightingView>& selectedView() const { return selectedView_; }
  void setSelectedView(tessaluna::platform::Ref<HighlightingView> view);
  void userSetSelectedView(tessaluna::platform::Ref<HighlightingView> view);
  // That of the selected row; absent without a selection.
  std::optional<Suggestion> selectedSuggestion() const;
  // Selects the first row with 0, and does nothing with more. A negative index clears the selection while there was never
  // a layout, and stops the program after one.
  void setSelectedSuggestionIndex(std::int64_t index);
  // The row above or below, with a notification of the target. Without a selection, and at the ends, nothing happens. From a
  // view that is not one of the rows, moveUp selects the last row and moveDown the first.
  void moveUp(tessaluna::platform::NSObject* sender);
  void moveDown(tessaluna::platform::NSObject* sender);

  // Additions for the keys that are not arrows. The selected row, counted from 0, and its selection, of which nobody is notified;
  // an index without a row selects none.
  std::optional<std::size_t> selectedRow() const;
  void selectRow(std::optional<std::size_t> row);
  // Moves the selection by that many rows at once, up with a negative number, and at most to an end; without a selection as from
  // outside of the rows. The target is notified once, if the selection has changed.
  void moveSelectionBy(std::int64_t rows);
  // How many rows the Page keys move by: as many as show, but for one.
  std::int64_t rowsOfPage() const;

  // Shows the pop-up, as wide as the field, with its upper left corner 2 points below the origin of the field's frame: the
  // lower left corner, in a flipped superview the upper left one. The field is kept alive until the next begin. One that is
  // in no window or in no view stops the program.
  void beginForTextField(const tessaluna::platform::Ref<tessaluna::platform::NSTextField>& field);
  // Brings a visible pop-up back under its field, cut off at y 0 of screen space. Its width stays. A field that has left its
  // window since stops the program.
  void parentControlMoved();
  // Ends the pop-up, if there is one. Rows, selection and suggestions stay. A pop-up that is hidden with the field's window
  // remains that window's child.
  void cancelSuggestions();

  // An addition: the pop-up ends when the field's window is hidden without having had the key status. False initially: then
  // it comes back with that window. Counts for later begins.
  bool endsWithHiddenWindow() const { return endsWithHiddenWindow_; }
  void setEndsWithHiddenWindow(bool ends) { endsWithHiddenWindow_ = ends; }

  // Of the rows' tracking areas, which belong to the controller, and of the rows, at the end of whose responder chain it is. An
  // entry selects the row, an exit none, and each notifies the target. A release ends the editing of the field, sends its action
  // and ends the pop-up.
  void mouseEntered(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseExited(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseUp(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;

  // The key of a tracking area's user info that holds the row.
  static std::string_view trackerKey() { return "whichImageView"; }

 protected:
  using ItemRef = tessaluna::platform::Ref<SuggestionItemViewController>;
  // Additions for derived classes. The row of a suggestion, before that is assigned: from the prototype here.
  virtual ItemRef makeItem(const Suggestion& suggestion);
  // What is laid out above a row or below the last one without being a row, as high as its frame; null here.
  virtual tessaluna::platform::Ref<tessaluna::platform::NSView> viewAboveRow(std::size_t /*row*/) { return nullptr; }
  virtual tessaluna::platform::Ref<tessaluna::platform::NSView> viewBelowRows() { return nullptr; }

 private:
  static const tessaluna::platform::Selector selectors_[];

  void changeSelection(tessaluna::platform::Ref<HighlightingView> view);
  template <class Iterator>
  void selectBefore(Iterator first, Iterator last);
  void layoutSuggestions();
  bool removeRows(tessaluna::platform::NSView& content, std::size_t layout);  // false if the layout was replaced meanwhile
  tessaluna::platform::CGRect withOtherViewsBeside(tessaluna::platform::CGRect row) const;
  tessaluna::platform::CGFloat heightToShow() const;
  tessaluna::platform::Ref<tessaluna::platform::NSTrackingArea> trackingAreaForView(
      const tessaluna::platform::Ref<HighlightingView>& view);
  tessaluna::platform::CGPoint locationBelow(const tessaluna::platform::NSTextField& field,
                                             tessaluna::platform::NSWindow& fieldWindow) const;
  void installMonitorAndObserver(const tessaluna::platform::Ref<SuggestionsWindow>& popUp,
                                 const tessaluna::platform::Ref<tessaluna::platform::NSWindow>& parent,
                                 const tessaluna::platform::Ref<tessaluna::platform::NSTextField>& field);
  tessaluna::platform::Ref<tessaluna::platform::NSEvent> mouseWentDown(
      const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event,
      const tessaluna::platform::Ref<SuggestionsWindow>& popUp,
      const tessaluna::platform::Ref<tessaluna::platform::NSWindow>& parent,
      const tessaluna::platform::Ref<tessaluna::platform::NSTextField>& field);

  tessaluna::platform::WeakRef<SuggestionsWindowTarget> target_;
  tessaluna::platform::Required<std::string> suggestionPrototype_{"suggestionPrototype"};
  std::optional<std::vector<Suggestion>> suggestions_;
  std::optional<std::size_t> maximumRows_;
  bool needsLayoutUpdate_ = false;  // intentional: written and never read
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSView>> fullContentView_{"fullContentView"};
  std::optional<std::vector<ItemRef>> viewControllers_;
  std::size_t layouts_ = 0;  // that have begun
  bool isInLayout_ = false;
  std::vector<tessaluna::platform::Ref<tessaluna::platform::NSView>> otherViews_;  // above and below rows
  std::optional<std::vector<tessaluna::platform::Ref<tessaluna::platform::NSTrackingArea>>> trackingAreas_;
  tessaluna::platform::Ref<HighlightingView> selectedView_;
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> parentTextField_;
  tessaluna::platform::Ref<tessaluna::platform::NSObject> localMouseDownEventMonitor_, lostFocusObserver_, hiddenObserver_;
  bool endsWithHiddenWindow_ = false;
};

}  // namespace TessalunaUIKit
