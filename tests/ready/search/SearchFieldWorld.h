// A field over a library of three things, or one whose questions the test answers.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/ready/search/SearchField.h"
#include "tessaluna/ready/search/matchedLetters.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::ready {

class SearchFieldWorld : public harness::StillWorld {
 protected:
  static constexpr const char *returnKey = "\r", *escape = "\x1B";

  SearchFieldWorld() {
    search->setSource([this](const SearchQuestion& question) {
      asked.push_back(question);
      if (!answersLater) question.answer(matches(question.text()));
    });
    search->setOnPick([this](const SearchRow& row) { calls.push_back("pick " + row.title); });
    search->setOnSearch([this](const std::string& text) { calls.push_back("search " + text); });
    window->contentView()->addSubview(search);
    user.click(*window, {100, 210});
    desktop.settle();
  }
  ~SearchFieldWorld() override {
    if (search) search->popUp()->cancelSuggestions();
  }

  static std::vector<SearchRow> matches(std::string_view typed) {
    const std::vector<SearchRow> library{{.title = "Amber Quartet", .section = "Artists", .id = 1},
                                         {.title = "Amber Signal", .detail = "by Noor Hale", .section = "Albums", .id = 2},
                                         {.title = "Amber Tide", .detail = "Noor Hale", .section = "Tracks", .id = 3}};
    std::vector<SearchRow> rows;
    for (const SearchRow& row : library)
      if (!matchedLetters(row.title, typed).empty()) rows.push_back(row);
    return rows;
  }
  static std::vector<SearchRow> counted(int count) {
    std::vector<SearchRow> rows;
    for (int i = 0; i < count; ++i) rows.push_back({.title = std::to_string(i), .id = i});
    return rows;
  }
  void answerCounted(int count) {
    answersLater = true;
    user.type("x");
    asked.back().answer(counted(count));
  }

  SearchPopUp& popUp() { return *search->popUp(); }
  platform::NSWindow& popUpWindow() { return *popUp().window(); }
  std::string text() { return search->field()->currentEditor() ? search->field()->currentEditor()->string() : "not edited"; }
  std::vector<std::string> titles() {
    std::vector<std::string> result;
    for (const SearchRow& row : popUp().content().rows) result.push_back(row.title);
    return result;
  }
  std::string selected() {
    const auto row = popUp().selected();
    return row ? row->title : "none";
  }
  // Of the rows, headings and note as they are laid out, from the top.
  std::vector<platform::Ref<platform::NSView>> laidOut() {
    const auto views = dynamic_cast<platform::NSScrollView&>(*popUpWindow().contentView()).documentView()->subviews();
    return {views.begin(), views.end()};
  }
  // The middle of a row, in the pop-up's base space.
  platform::CGPoint row(std::size_t index) {
    std::size_t row = 0;
    for (const platform::Ref<platform::NSView>& view : laidOut())
      if (dynamic_cast<TessalunaUIKit::HighlightingView*>(view.get()) && row++ == index)
        return view->convertPointToView({view->frame().size.width / 2, view->frame().size.height / 2}, nullptr);
    ADD_FAILURE() << "no row " << index;
    return {};
  }
  // What assistive clients find in the pop-up.
  std::string list() {
    std::string lines;
    for (const std::string& line : accessibleTreeLines(search->field()->cell())) lines += line + "\n";
    return lines;
  }

  bool answersLater = false;
  std::vector<SearchQuestion> asked;
  std::vector<std::string> calls;
  platform::Ref<SearchField> search = platform::make<SearchField>(platform::CGRect{50, 200, 300, 26});
  platform::Ref<platform::NSWindow> window = showWindow({100, 300, 500, 300});
};

}  // namespace tessaluna::ready
