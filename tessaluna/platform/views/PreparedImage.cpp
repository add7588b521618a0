#include "tessaluna/platform/views/PreparedImage.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/graphics/EncodedPicture.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tessaluna/platform/graphics/reducedPixels.h"
#include "tessaluna/platform/time/DispatchQueue.h"

namespace tessaluna::platform {

namespace {

// Of what is still encoded, the representation that the image would draw; null if it draws another one.
const NSImageRep* encodedRepresentation(const NSImage& image) {
  const NSImageRep* drawn = image.representationToDraw();
  return drawn && drawn->encoded() ? drawn : nullptr;
}

// At least as many as are wanted each way, by one factor for both.
std::pair<int, int> reducedSize(const NSImageRep& representation, CGSize wanted) {
  const int wide = representation.pixelsWide(), high = representation.pixelsHigh();
  const double factor = std::min(1.0, std::max(wanted.width / wide, wanted.height / high));
  const auto whole = [&](int length) { return std::clamp(static_cast<int>(std::ceil(length * factor)), 1, length); };
  return {whole(wide), whole(high)};
}

// Those that somebody keeps alive.
std::vector<std::weak_ptr<PreparedImage>>& known() {
  static std::vector<std::weak_ptr<PreparedImage>> all;
  return all;
}

}  // namespace

bool PreparedImage::isNeededFor(const NSImage& image) { return encodedRepresentation(image) != nullptr; }

PreparedImage::PreparedImage(const Ref<NSImage>& image, CGSize pixels) : image_(image), pixels_(pixels) {}

std::shared_ptr<PreparedImage> PreparedImage::of(const Ref<NSImage>& image, CGSize pixels, std::function<void()> changed) {
  std::erase_if(known(), [](const std::weak_ptr<PreparedImage>& each) { return each.expired(); });
  std::shared_ptr<PreparedImage> result;
  for (const std::weak_ptr<PreparedImage>& each : known())
    if (const auto candidate = each.lock(); candidate && candidate->image_.lock() == image && candidate->serves(pixels))
      result = candidate;
  if (!result) {
    result = std::make_shared<PreparedImage>(image, pixels);
    known().push_back(result);
    begin(result);
  }
  if (!result->isDone_) result->waiting_.push_back(std::move(changed));
  return result;
}

void PreparedImage::begin(const std::shared_ptr<PreparedImage>& prepared) {
  const Ref<NSImage> image = prepared->image_.lock();
  const NSImageRep* representation = image ? encodedRepresentation(*image) : nullptr;
  if (!representation) return;
  using Pixels = std::shared_ptr<const backend::ImagePixels>;
  const auto [width, height] = reducedSize(*representation, prepared->pixels_);
  DispatchQueue::main().answer(
      [encoded = representation->encoded(), width = width, height = height]() -> Pixels {
        const Pixels all = encoded->decode();
        return all ? std::make_shared<const backend::ImagePixels>(reducedPixels(*all, width, height)) : nullptr;
      },
      [weak = std::weak_ptr(prepared), size = image->size()](const Pixels& pixels) {
        const std::shared_ptr<PreparedImage> self = weak.lock();
        if (!self) return;
        if (pixels) {
          self->picture_ = make<NSImage>(size);
          self->picture_->addRepresentation(make<NSImageRep>(pixels));
        }
        self->isDone_ = true;
        for (const std::function<void()>& changed : std::exchange(self->waiting_, {})) changed();
      });
}

}  // namespace tessaluna::platform
