// The pop-up of a search field: the kit's, with rows made from what was found, headings above their sections, and a note below the
// rows that says what is under way. Nothing is selected until the user selects it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/ready/search/SearchRow.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

namespace tessaluna::ready {

class SearchPopUp : public TessalunaUIKit::SuggestionsWindowController {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  struct Content {
    std::vector<SearchRow> rows{};
    std::string typed{};  // whose letters are emphasized in the rows
    std::string note{};   // below the rows; empty: none
    bool isBusy = false;  // the note has a turning wheel
  };

  SearchPopUp();

  bool isOpen() { return window()->isVisible(); }
  const Content& content() const { return content_; }
  // Replaces everything that shows. A selected row that is among the new ones stays selected; otherwise none is. Nobody is
  // notified.
  void setContent(Content content);
  // To assistive clients.
  void setListName(const std::string& name);
  void openBelow(const platform::Ref<platform::NSTextField>& field);
  // Brings an open pop-up under its field, as wide as that is by now.
  void followField(const platform::NSTextField& field);
  std::optional<SearchRow> selected() const;

 protected:
  ItemRef makeItem(const Suggestion& suggestion) override;
  platform::Ref<platform::NSView> viewAboveRow(std::size_t row) override;
  platform::Ref<platform::NSView> viewBelowRows() override;

 private:
  Content content_;
};

}  // namespace tessaluna::ready
