#include "tessaluna/platform/graphics/NeutralAxis.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/contrast.h"

namespace tessaluna::platform {

namespace {

// Between the largest and the smallest component: the grays of logos have a tinge.
constexpr double greatestTinge = 0.05;
bool follows = false;

backend::Color mixed(const backend::Color& from, const backend::Color& to, double share) {
  return {std::lerp(from.red, to.red, share), std::lerp(from.green, to.green, share), std::lerp(from.blue, to.blue, share),
          1};
}

// As near to the color as has the contrast to the ground, on the way to another that has more.
backend::Color withContrast(double contrast, const backend::Color& color, const backend::Color& strongest,
                            const backend::Color& ground) {
  if (contrastRatio(color, ground) >= contrast) return color;
  constexpr int halvings = 12;
  double less = 0, enough = 1;
  for (int i = 0; i < halvings; ++i) {
    const double middle = (less + enough) / 2;
    (contrastRatio(mixed(color, strongest, middle), ground) >= contrast ? enough : less) = middle;
  }
  return mixed(color, strongest, enough);
}

}  // namespace

NeutralAxis::NeutralAxis(backend::Color text, backend::Color ground)
    : text_(painted(text, ground)),
      ground_(ground),
      isDark_(contrastRatio(ground, {0, 0, 0, 1}) < contrastRatio(text_, {0, 0, 0, 1})) {
  ground_.alpha = 1;
}

NeutralAxis NeutralAxis::ofPalette() {
  return {NSColor::controlTextColor()->components(), NSColor::windowBackgroundColor()->components()};
}

// Of a gray that has it on white.
double NeutralAxis::contrastThatStays(double white, double least) {
  const double contrast = contrastRatio({white, white, white}, {1, 1, 1});
  return contrast >= contrastOfText ? contrastOfText : contrast >= contrastOfShapes ? least : 1;
}

backend::Color NeutralAxis::mapped(backend::Color color, double leastContrast) const {
  if (color.isSystem) return color;
  const auto [least, greatest] = std::minmax({color.red, color.green, color.blue});
  const bool isNeutral = greatest - least <= greatestTinge;
  if (!isNeutral && (!isDark_ || contrastRatio({color.red, color.green, color.blue}, ground_) >= leastContrast))
    return color;
  const double white = std::clamp((least + greatest) / 2, 0.0, 1.0);
  backend::Color result =
      isNeutral ? withContrast(contrastThatStays(white, leastContrast), mixed(text_, ground_, white), text_, ground_)
                : withContrast(leastContrast, {color.red, color.green, color.blue}, {1, 1, 1}, ground_);
  result.alpha = color.alpha;
  result.isSystem = true;
  return result;
}

bool neutralsFollowPalette() { return follows; }
void setNeutralsFollowPalette(bool follow) { follows = follow; }

}  // namespace tessaluna::platform
