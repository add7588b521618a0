// A search field with a completion pop-up, whole: magnifier, clear button, keyboard, mouse and assistive clients. The program says
// what matches and what is done with it:
//
//   const auto search = make<ready::SearchField>(CGRect{20, 20, 320, 26});
//   search->setSource([this](const ready::SearchQuestion& question) { question.answer(rowsFor(question.text())); });
//   search->setOnPick([this](const ready::SearchRow& row) { open(row.id); });
//   search->setOnSearch([this](const std::string& text) { showAllFor(text); });
//
//   typing          asks the source; the rows of the last answer stay until the new ones come
//   arrow keys      move the selection, as do the Page keys, and Home and End with Control; the field shows the selected title
//   Return          picks the selected row; with none it searches for what was typed
//   Escape          closes the pop-up and restores what was typed
//   Down, Alt-Down  open the pop-up again
//   the mouse       picks the row that it clicks; the field keeps what was typed while it only moves
//
// The pop-up stays open over an answer without rows and says so, and before the first answer it says that it is searching.
// Main thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/ready/search/SearchPopUp.h"
#include "tessaluna/ready/search/SearchQuestions.h"

namespace tessaluna::ready {

// What the field says, in the user's language.
struct SearchTexts {
  std::string name = "Search";  // to assistive clients
  std::string placeholder = "Search";
  std::string clear = "Clear";          // the button's name
  std::string list = "Search results";  // the name of the list of rows
  std::string busy = "Searching…";
  std::string empty = "Nothing found";
};

class SearchField : public platform::NSView,
                    public platform::NSTextFieldDelegate,
                    public TessalunaUIKit::SuggestionsWindowTarget {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit SearchField(platform::CGRect frame);  // 26 points are the usual height
  ~SearchField() override;
  void didInit() override;

  // Asked for each text that is not blank. It answers immediately, later or never; see SearchQuestion.
  void setSource(SearchQuestions::Source source);
  // How long the user may pause before the source is asked, in seconds; zero at first, as with a number below it or NaN.
  void setDelay(double seconds) { questions_.setDelay(seconds); }
  // A row was picked, by Return, a click or an assistive client; its title is in the field by then, selected, so that the next
  // search is typed over it. The call may remove the field.
  void setOnPick(std::function<void(const SearchRow&)> block) { onPick_ = std::move(block); }
  // Return without a selection; with an empty text after the clear button.
  void setOnSearch(std::function<void(const std::string&)> block) { onSearch_ = std::move(block); }
  // How many rows show at most, 10 at first and at least 1; the user scrolls to the others.
  void setMaximumRows(std::size_t rows) { popUp_->setMaximumRows(rows); }
  void setTexts(SearchTexts texts);

  // What the user has typed, not the title that the field may show in its place. Setting it asks nothing and closes the pop-up.
  const std::string& text() const { return typed_; }
  void setText(const std::string& text);

  const platform::Ref<platform::NSTextField>& field() const { return field_; }
  const platform::Ref<SearchPopUp>& popUp() const { return popUp_; }

  platform::CGSize intrinsicContentSize() const override;
  bool performKeyEquivalent(const platform::Ref<platform::NSEvent>& event) override;
  void updateTrackingAreas() override;
  void resizeSubviewsWithOldSize(platform::CGSize oldSize) override;
  void controlTextDidChange(const platform::Ref<platform::NSNotification>& notification) override;
  void controlTextDidEndEditing(const platform::Ref<platform::NSNotification>& notification) override;
  bool controlTextViewDoCommandBySelector(platform::NSControl& field, platform::NSTextView& editor,
                                          std::string_view selector) override;
  void suggestionSelectionChanged(std::optional<TessalunaUIKit::Suggestion> suggestion) override;

 private:
  static const platform::Selector selectors_[];
  void submit(platform::NSObject* sender);  // the field's action: Return, or a row was chosen; from others as Return
  void clear(platform::NSObject* sender);
  void ask();
  bool open();
  void close();
  void endWatching();
  void showBusy(bool isBusy);
  void showAnswer(std::vector<SearchRow> rows);
  void showPopUp(SearchPopUp::Content content);
  void moveSelectionBy(std::int64_t rows);
  void showInField(std::string_view text);
  void fieldTextDidChange();

  SearchTexts texts_;
  SearchQuestions questions_;
  std::function<void(const SearchRow&)> onPick_;
  std::function<void(const std::string&)> onSearch_;
  platform::Ref<platform::NSTextField> field_;
  platform::Ref<platform::NSView> magnifier_, wheel_;
  platform::Ref<platform::NSButton> clearButton_;
  platform::Ref<SearchPopUp> popUp_;
  std::string typed_;
  bool hasSource_ = false, isMovedByKeys_ = false, isTitleInField_ = false;
  bool mayOpen_ = false;                  // an answer opens the pop-up: not where the user has closed it since the question
  bool wasKey_ = false;                   // the window, when the question was asked
  std::optional<std::size_t> pointedAt_;  // the row that the pointer, and no key, has selected
  std::optional<SearchRow> picked_;       // by Return, until the field's action
  backend::Timer busy_;
  std::vector<platform::Ref<platform::NSObject>> windowObservers_;
  platform::Ref<platform::NSObject> pressMonitor_;
};

}  // namespace tessaluna::ready
