#include "tools/artwork/SheetLayout.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tools/artwork/inkOfDrawing.h"

namespace artwork {

using tessaluna::platform::CGRect;
using tessaluna::platform::CGSize;
using TessalunaUIKit::Routine;

namespace {

constexpr double border = 20;
constexpr double cellGap = 14;
constexpr double pictureRoom = 96;  // the height for each picture
constexpr double labelRoom = 38;    // the height below it, with the gap to the next row
constexpr double headingRoom = 44;
constexpr double widest = 1240;  // of a sheet
constexpr std::size_t maxFlags = 8;

// A square picture of the longer side would look larger than a long one.
constexpr double squareSide = 72, longerSide = 96;

CGSize pictureSize(const Routine& routine) {
  const CGSize frame = routine.defaultFrame.size;
  if (!scalesWithItsFrame(routine)) return frame;
  const double proportion = frame.width / frame.height;
  const double longer = proportion > 0.8 && proportion < 1.25 ? squareSide : longerSide;
  const double scale = longer / std::max(frame.width, frame.height);
  return {frame.width * scale, frame.height * scale};
}

std::string flagsText(const Routine& routine, const std::vector<char>& flags) {
  std::string text;
  for (std::size_t i = 0; i < flags.size(); ++i)
    if (flags[i]) text += (text.empty() ? "" : " + ") + std::string(routine.flags[i].name);
  return text.empty() && !flags.empty() ? "no flag on" : text;
}

std::vector<SheetCell> cellsOf(const Routine& routine) {
  std::vector<SheetCell> cells;
  const CGSize size = pictureSize(routine);
  for (unsigned combination = 0; combination < 1u << routine.flags.size(); ++combination) {
    SheetCell cell{.routine = &routine, .picture = {{0, 0}, size}, .name = routine.member()};
    for (std::size_t i = 0; i < routine.flags.size(); ++i) cell.flags.push_back(combination >> i & 1);
    cell.flagsThatAreOn = flagsText(routine, cell.flags);
    cells.push_back(std::move(cell));
  }
  return cells;
}

double labelWidth(const SheetCell& cell) {
  return std::max(widthOfLetters(cell.name, SheetLayout::labelStyle),
                  widthOfLetters(cell.flagsThatAreOn, SheetLayout::labelStyle));
}

}  // namespace

void SheetCell::draw(CGRect frame) const {
  std::array<bool, maxFlags> values{};
  std::ranges::copy(flags, values.begin());
  routine->draw(frame, std::span<const bool>(values.data(), flags.size()));
}

SheetLayout SheetLayout::make(std::optional<TessalunaUIKit::RoutineFamily> family) {
  SheetLayout layout;
  double cellWidth = pictureRoom;
  for (const Routine& routine : TessalunaUIKit::routines()) {
    if (family && routine.family != *family) continue;
    for (SheetCell& cell : cellsOf(routine)) {
      cellWidth = std::max(cellWidth, labelWidth(cell));
      layout.cells.push_back(std::move(cell));
    }
  }
  const double step = cellWidth + cellGap;
  const int columns = std::max(1, int((widest - 2 * border + cellGap) / step));

  // From the top, with y downward until the height is known.
  double top = border;
  int column = 0, usedColumns = 1;
  const auto endRow = [&] {
    if (column > 0) top += pictureRoom + labelRoom;
    column = 0;
  };
  std::optional<TessalunaUIKit::RoutineFamily> earlier;
  for (SheetCell& cell : layout.cells) {
    if (earlier != cell.routine->family) {
      endRow();
      earlier = cell.routine->family;
      layout.headings.push_back({std::string(familyName(*earlier)), {border, top + 18}});
      top += headingRoom;
    } else if (column == columns) {
      endRow();
    }
    const double middle = border + column * step + cellWidth / 2;
    const CGSize size = cell.picture.size;
    cell.picture.origin = {middle - size.width / 2, top + (pictureRoom + size.height) / 2};
    cell.nameBaseline = {middle, top + pictureRoom + 13};
    cell.flagsBaseline = {middle, top + pictureRoom + 25};
    usedColumns = std::max(usedColumns, ++column);
  }
  endRow();
  double width = 2 * border + usedColumns * step - cellGap;
  for (const SheetHeading& heading : layout.headings)
    width = std::max(width, 2 * border + widthOfLetters(heading.text, headingStyle));
  layout.size = {std::ceil(width), top};

  for (SheetHeading& heading : layout.headings) heading.baseline.y = top - heading.baseline.y;
  for (SheetCell& cell : layout.cells) {
    // Whole points keep snapped edges where the routine means them.
    cell.picture.origin = {std::round(cell.picture.origin.x), std::round(top - cell.picture.origin.y)};
    cell.nameBaseline.y = top - cell.nameBaseline.y;
    cell.flagsBaseline.y = top - cell.flagsBaseline.y;
  }
  return layout;
}

}  // namespace artwork
