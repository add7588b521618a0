// One row of a search field's pop-up: a picture, a title in which the letters that match what was typed are bold, and below it
// a detail. To assistive clients it is called by both, and described by its section.
#pragma once

#include <vector>

#include "tessaluna/ready/search/SearchRow.h"
#include "tessaluna/uikit/suggestions/HighlightingView.h"

namespace tessaluna::ready {

class SearchRowView : public TessalunaUIKit::HighlightingView {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // As high as the row's content asks for; the width comes from the pop-up.
  SearchRowView(SearchRow row, std::string_view typed);

  void drawRect(platform::CGRect dirtyRect) override;
  std::string accessibilityTitle() const override;
  std::string accessibilityHelp() const override { return row_.section; }

 private:
  const SearchRow row_;
  const std::vector<platform::NSRange> matched_;
};

}  // namespace tessaluna::ready
