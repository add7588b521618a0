#include "tessaluna/uikit/coverart/coverArtGeometry.h"

#include <cmath>
#include <cstdint>

#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSImageRep.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

std::int64_t wholeNumber(CGFloat width) {
  constexpr double beyond = 9223372036854775808.0;  // 2 to the power of 63
  if (!std::isfinite(width) || width < -beyond || width >= beyond)
    stopProgram("CoverArtThumbnailView: the width of an image is not a whole number of 64 bits");
  return static_cast<std::int64_t>(width);
}

}  // namespace

CGSize naturalSizeOf(const std::vector<Ref<NSImageRep>>& representations) {
  CGSize size;
  for (const Ref<NSImageRep>& each : representations) {
    each->setSize({static_cast<CGFloat>(each->pixelsWide()), static_cast<CGFloat>(each->pixelsHigh())});
    if (each->pixelsWide() > wholeNumber(size.width)) size = each->size();
  }
  wholeNumber(size.width);  // of the last one, which nothing was compared with
  return size;
}

CGRect frameOfEnlargedCover(CGSize size, CGRect thumbnail, CGRect screen) {
  const CGFloat roomToTheRight = screen.origin.x + screen.size.width - thumbnail.origin.x;
  if (size.width > roomToTheRight) {
    size.height = size.height * roomToTheRight / size.width;
    size.width = roomToTheRight;
  }
  const CGFloat top = thumbnail.origin.y + thumbnail.size.height;
  const CGFloat roomBelow = top - screen.origin.y;
  if (size.height > roomBelow) {
    size.width = size.width * roomBelow / size.height;
    size.height = roomBelow;
  }
  return {thumbnail.origin.x, top - size.height, size.width, size.height};
}

}  // namespace TessalunaUIKit
