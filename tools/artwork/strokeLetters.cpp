#include "tools/artwork/strokeLetters.h"

#include <algorithm>
#include <vector>

namespace artwork {

using tessaluna::platform::CGPoint;
using tessaluna::platform::NSBezierPath;
using tessaluna::platform::Ref;

namespace {

// A point is two digits, x and y: feet are at 2, descenders reach 0, small letters reach 6 and capitals 8. An "r" after
// a point makes it a rounded corner, towards which the line only bends; two of them in a row meet halfway. A comma begins
// another stroke, and a stroke of one point is a dot.
struct Letter {
  char sign;
  std::string_view strokes;
};

constexpr Letter letters[] = {
    {'a', "44 46r 06r 02r 42r 44,46 42"},
    {'b', "08 02,04 06r 46r 42r 02r 04"},
    {'c', "35 36r 06r 02r 32r 33"},
    {'d', "48 42,44 46r 06r 02r 42r 44"},
    {'e', "04 44 46r 06r 02r 42r 43"},
    {'f', "28 18r 17 12,06 26"},
    {'g', "44 46r 06r 02r 42r 44,46 41 40r 00r 01"},
    {'h', "08 02,04 06r 46r 44 42"},
    {'i', "06 02,08"},
    {'j', "16 11 10r 00,18"},
    {'k', "08 02,36 04 32"},
    {'l', "08 02"},
    {'m', "06 02,04 06r 36r 34 32,34 36r 66r 64 62"},
    {'n', "06 02,04 06r 46r 44 42"},
    {'o', "04 06r 46r 42r 02r 04"},
    {'p', "06 00,04 06r 46r 42r 02r 04"},
    {'q', "46 40,44 46r 06r 02r 42r 44"},
    {'r', "06 02,04 06r 26"},
    {'s', "35 36r 06r 04r 34r 32r 02r 03"},
    {'t', "18 13 12r 22,06 26"},
    {'u', "06 04 02r 42r 44,46 42"},
    {'v', "06 22 46"},
    {'w', "06 22 36 42 66"},
    {'x', "06 42,02 46"},
    {'y', "06 22,46 10"},
    {'z', "06 36 02 32"},
    {'A', "02 38 62,14 54"},
    {'B', "02 08 28 48r 45r 25 05,25 55r 52r 22 02"},
    {'C', "56 58r 08r 02r 52r 54"},
    {'D', "02 08 28 58r 52r 22 02"},
    {'E', "48 08 02 42,05 35"},
    {'F', "48 08 02,05 35"},
    {'G', "56 58r 08r 02r 52r 55 35"},
    {'H', "08 02,58 52,05 55"},
    {'I', "08 02"},
    {'J', "38 34 32r 02r 03"},
    {'K', "08 02,48 04,15 42"},
    {'L', "08 02 42"},
    {'M', "02 08 34 68 62"},
    {'N', "02 08 52 58"},
    {'O', "05 08r 58r 52r 02r 05"},
    {'P', "02 08 28 58r 55r 25 05"},
    {'Q', "05 08r 58r 52r 02r 05,34 52"},
    {'R', "02 08 28 58r 55r 25 05,25 52"},
    {'S', "47 48r 08r 05r 45r 42r 02r 03"},
    {'T', "08 48,28 22"},
    {'U', "08 05 02r 52r 55 58"},
    {'V', "08 32 68"},
    {'W', "08 22 48 62 88"},
    {'X', "08 52,02 58"},
    {'Y', "08 25 48,25 22"},
    {'Z', "08 58 02 52"},
    {'0', "05 08r 48r 42r 02r 05"},
    {'1', "06 28 22"},
    {'2', "07 08r 48r 46 02 42"},
    {'3', "07 08r 48r 45r 15,25 45r 42r 02r 03"},
    {'4', "32 38 04 44"},
    {'5', "48 08 05 25 45r 42r 02r 03"},
    {'6', "38 08r 04 02r 42r 45r 05r 04"},
    {'7', "08 48 12"},
    {'8', "25 05r 08r 48r 45r 25 05r 02r 42r 45r 25"},
    {'9', "46 45r 05r 08r 48r 46 42r 12"},
    {' ', ""},
    {'.', "02"},
    {',', "12 01"},
    {':', "02,06"},
    {'-', "04 34"},
    {'_', "01 41"},
    {'+', "04 44,26 22"},
    {'=', "03 43,05 45"},
    {'/', "01 38"},
    {'(', "18 06 03 11"},
    {')', "08 16 13 01"},
};
constexpr Letter emptyBox = {'\0', "02 08 48 42 02"};

constexpr double rows = 9;         // of the grid, with the line's own width
constexpr double foot = 2;         // the row of the baseline
constexpr double narrowing = 0.8;  // a column is narrower than a row is high
constexpr double gap = 1.9;        // columns between letters
constexpr double spaceWidth = 1.6;

const Letter& letterOf(char sign) {
  const auto* found = std::ranges::find(letters, sign, &Letter::sign);
  return found == std::ranges::end(letters) ? emptyBox : *found;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

double columnsOf(const Letter& letter) {
  if (letter.strokes.empty()) return spaceWidth;
  double columns = 0;
  for (std::size_t i = 0; i + 1 < letter.strokes.size(); ++i) {
    if (!isDigit(letter.strokes[i])) continue;
    columns = std::max(columns, double(letter.strokes[i] - '0'));
    ++i;
  }
  return columns;
}

struct Corner {
  CGPoint at;
  bool isRounded = false;
};

CGPoint between(CGPoint a, CGPoint b, double part) { return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part}; }

void appendStroke(NSBezierPath& path, const std::vector<Corner>& corners) {
  path.moveToPoint(corners[0].at);
  // Only some canvases draw a line without a length.
  if (corners.size() == 1) path.lineToPoint({corners[0].at.x, corners[0].at.y + 0.01});
  CGPoint current = corners[0].at;
  for (std::size_t i = 1; i < corners.size(); ++i) {
    const CGPoint corner = corners[i].at;
    if (!corners[i].isRounded) {
      if (!corners[i - 1].isRounded) path.lineToPoint(corner);
      current = corner;
      continue;
    }
    const Corner& next = corners[i + 1];
    const CGPoint end = next.isRounded ? between(corner, next.at, 0.5) : next.at;
    constexpr double quarterOfAnEllipse = 0.5523;
    path.curveToPoint(end, between(current, corner, quarterOfAnEllipse), between(end, corner, quarterOfAnEllipse));
    current = end;
  }
}

}  // namespace

double widthOfLetters(std::string_view text, const LetterStyle& style) {
  if (text.empty()) return 0;
  double columns = -gap;
  for (const char sign : text) columns += columnsOf(letterOf(sign)) + gap;
  return columns * narrowing * style.size / rows + style.lineWidth;
}

Ref<NSBezierPath> pathOfLetters(std::string_view text, CGPoint baseline, const LetterStyle& style) {
  const Ref<NSBezierPath> path = NSBezierPath::bezierPath();
  path->setLineWidth(style.lineWidth);
  path->setLineCapStyle(tessaluna::platform::NSRoundLineCapStyle);
  path->setLineJoinStyle(tessaluna::platform::NSRoundLineJoinStyle);
  const double row = style.size / rows, column = row * narrowing;
  double x = baseline.x + style.lineWidth / 2;
  for (const char sign : text) {
    const Letter& letter = letterOf(sign);
    const std::string_view strokes = letter.strokes;
    std::vector<Corner> corners;
    for (std::size_t i = 0; i < strokes.size(); ++i) {
      if (strokes[i] == ',') {
        appendStroke(*path, corners);
        corners.clear();
      } else if (strokes[i] == 'r') {
        corners.back().isRounded = true;
      } else if (isDigit(strokes[i])) {
        corners.push_back({{x + (strokes[i] - '0') * column, baseline.y + (strokes[i + 1] - '0' - foot) * row}});
        ++i;
      }
    }
    if (!corners.empty()) appendStroke(*path, corners);
    x += (columnsOf(letter) + gap) * column;
  }
  return path;
}

}  // namespace artwork
