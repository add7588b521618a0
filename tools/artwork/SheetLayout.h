// Where everything is on a contact sheet: every routine in every combination of its flags, below the heading of its
// family. In points from the lower left corner of the sheet.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/uikit/stylekit/Routines.h"
#include "tools/artwork/strokeLetters.h"

namespace artwork {

struct SheetCell {
  const TessalunaUIKit::Routine* routine = nullptr;
  std::vector<char> flags = {};  // 0 or 1 for each flag of the routine; contiguous, unlike a vector of bool
  tessaluna::platform::CGRect picture = {};
  std::string name = {}, flagsThatAreOn = {};                          // the two lines below the picture
  tessaluna::platform::CGPoint nameBaseline = {}, flagsBaseline = {};  // at the middle of the line

  void draw(tessaluna::platform::CGRect frame) const;
};

struct SheetHeading {
  std::string text;
  tessaluna::platform::CGPoint baseline;
};

struct SheetLayout {
  static constexpr LetterStyle labelStyle = {.size = 9, .lineWidth = 0.9};
  static constexpr LetterStyle headingStyle = {.size = 15, .lineWidth = 1.6};

  std::vector<SheetHeading> headings;
  std::vector<SheetCell> cells;
  tessaluna::platform::CGSize size;

  // Lays out one family, or all of them.
  static SheetLayout make(std::optional<TessalunaUIKit::RoutineFamily> family);
};

}  // namespace artwork
