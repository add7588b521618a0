#include <algorithm>
#include <cmath>
#include <string>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/PaletteCanvas.h"
#include "tessaluna/platform/graphics/contrast.h"
#include "tools/artwork/Command.h"
#include "tools/artwork/Failure.h"
#include "tools/artwork/Picture.h"
#include "tools/artwork/SheetLayout.h"
#include "tools/artwork/inkOfDrawing.h"
#include "tools/artwork/nearestNames.h"

namespace artwork {

namespace {

using tessaluna::platform::CGPoint;
using tessaluna::platform::CGRect;
using tessaluna::platform::NSBezierPath;
using tessaluna::platform::NSColor;
using tessaluna::platform::Ref;
using TessalunaUIKit::RoutineFamily;

RoutineFamily parseFamily(std::string_view text) {
  std::vector<std::string_view> names;
  for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines()) {
    const std::string_view name = familyName(routine.family);
    if (editDistance(name, text) == 0) return routine.family;
    if (names.empty() || names.back() != name) names.push_back(name);
  }
  std::string message = "--family: unknown family " + inQuotes(text);
  const std::string nearest = suggestion(text, names);
  if (!nearest.empty()) throw UsageFailure(message + nearest);
  message += "; the families are ";
  for (std::size_t i = 0; i < names.size(); ++i) message += (i ? ", " : "") + std::string(names[i]);
  throw UsageFailure(message);
}

// The background of a sheet and what is visible on it.
class SheetBackground {
 public:
  explicit SheetBackground(const std::optional<tessaluna::backend::Color>& color) {
    if (color) lightness_ = 0.2126 * color->red + 0.7152 * color->green + 0.0722 * color->blue;
  }

  // On a transparent sheet a medium gray, which is visible on white and on black.
  double inkWhite() const { return !lightness_ ? 0.5 : isLight() ? 0.15 : 0.9; }
  double tileWhite() const { return isLight() ? 0.2 : 0.88; }
  bool hides(const Ink& ink) const { return lightness_ && std::abs(ink.lightness - *lightness_) < 0.3; }

 private:
  bool isLight() const { return *lightness_ > 0.45; }

  std::optional<double> lightness_;
};

// From a color that is well visible on the background to the background's own color.
tessaluna::platform::NeutralAxis axisOn(const tessaluna::backend::Color& ground) {
  using tessaluna::backend::Color;
  constexpr Color black{0, 0, 0, 1}, pale{0.95, 0.95, 0.95, 1};
  using tessaluna::platform::contrastRatio;
  return {contrastRatio(black, ground) >= contrastRatio(pale, ground) ? black : pale, ground};
}

void drawText(const std::string& text, CGPoint baseline, const LetterStyle& style) {
  pathOfLetters(text, baseline, style)->stroke();
}

void drawCentered(const std::string& text, CGPoint baseline) {
  const double width = widthOfLetters(text, SheetLayout::labelStyle);
  drawText(text, {std::round(baseline.x - width / 2), baseline.y}, SheetLayout::labelStyle);
}

void drawCell(const SheetCell& cell, const SheetBackground& ground) {
  const auto draw = [&](CGRect frame) { cell.draw(frame); };
  const auto ink = inkOfDrawing(cell.picture, cell.picture.size, draw);
  if (ink && ground.hides(*ink)) {
    NSColor::colorWithSRGBRed(ground.tileWhite(), ground.tileWhite(), ground.tileWhite(), 1)->setFill();
    NSBezierPath::bezierPathWithRoundedRect(NSInsetRect(cell.picture, -6, -6), 5, 5)->fill();
  }
  tessaluna::platform::NSGraphicsContext::saveGraphicsState();
  cell.draw(cell.picture);
  tessaluna::platform::NSGraphicsContext::restoreGraphicsState();
  NSColor::colorWithSRGBRed(ground.inkWhite(), ground.inkWhite(), ground.inkWhite(), 1)->setStroke();
  drawCentered(cell.name, cell.nameBaseline);
  drawCentered(cell.flagsThatAreOn, cell.flagsBaseline);
}

void drawSheet(const SheetLayout& layout, const SheetBackground& ground) {
  const Ref<NSColor> ink = NSColor::colorWithSRGBRed(ground.inkWhite(), ground.inkWhite(), ground.inkWhite(), 1);
  for (const SheetHeading& heading : layout.headings) {
    ink->setStroke();
    drawText(heading.text, heading.baseline, SheetLayout::headingStyle);
  }
  for (const SheetCell& cell : layout.cells) drawCell(cell, ground);
}

void sheet(const Arguments& arguments) {
  arguments.rejectWords();
  const std::string path = picturePath(arguments.value("-o"));
  std::optional<RoutineFamily> family;
  if (const auto name = arguments.value("--family")) family = parseFamily(*name);
  Picture picture;
  if (const auto scale = arguments.value("--scale")) picture.scale = parseScale(*scale);
  if (const auto background = arguments.value("--background")) picture.background = parseBackground(*background);

  const bool follows = arguments.has("--follow");
  if (follows && !picture.background) throw UsageFailure("--follow needs a --background");

  const SheetLayout layout = SheetLayout::make(family);
  picture.area = {{0, 0}, layout.size};
  writePicture(path, picture, [&](tessaluna::backend::Canvas& canvas) {
    // An artwork that follows is drawn as for white.
    std::optional<tessaluna::platform::PaletteCanvas> following;
    if (follows) following.emplace(canvas, axisOn(*picture.background));
    const tessaluna::platform::CanvasScope scope(following ? static_cast<tessaluna::backend::Canvas&>(*following) : canvas);
    drawSheet(layout, SheetBackground(follows ? tessaluna::backend::Color{1, 1, 1, 1} : picture.background));
  });
}

constexpr Option options[] = {{"-o"}, {"--family"}, {"--scale"}, {"--background"}, {"--follow", Option::Value::None}};

}  // namespace

const Command sheetCommand = {
    .name = "sheet",
    .usage = "-o FILE.png|FILE.svg [--family NAME] [--scale S] [--background none|light|dark|#rrggbb] [--follow]",
    .summary =
        "Paints a contact sheet into a PNG or SVG file: every routine in every combination of its flags, by families,\n"
        "or one family alone, such as \"Mood icons\". A glyph that the background would hide has a tile behind it; with\n"
        "--follow, black becomes the color of text on the background, and white that of the background.",
    .options = options,
    .run = sheet,
};

}  // namespace artwork
