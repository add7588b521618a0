#include "tessaluna/platform/graphics/NSImage.h"

#include <map>

#include "tessaluna/platform/backend/imageHeader.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/EncodedPicture.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSImageRep.h"

namespace tessaluna::platform {

const ClassInfo NSImage::staticClassInfo{.name = "NSImage", .base = &NSObject::staticClassInfo};

namespace {

std::map<std::string, Ref<NSImage>>& namedImages() {
  static std::map<std::string, Ref<NSImage>> images;
  return images;
}

// What is not decoded before it is drawn.
constexpr std::int64_t manyPixels = std::int64_t{1} << 20;

Ref<NSImageRep> representationOf(std::span<const std::byte> bytes) {
  const std::optional<backend::ImageHeader> header = backend::imageHeader(bytes);
  if (header && (!header->isWhole || header->width > backend::maxImagePixels / header->height)) return nullptr;
  if (header && header->width * header->height > manyPixels)
    return make<NSImageRep>(std::make_shared<EncodedPicture>(bytes), static_cast<int>(header->width),
                            static_cast<int>(header->height));
  const auto pixels = EncodedPicture::decode(bytes);
  return pixels ? make<NSImageRep>(pixels) : nullptr;
}

}  // namespace

NSImage::NSImage(CGSize size, bool flipped, DrawingHandler handler)
    : size_(size), handlerSize_(size), handlerIsFlipped_(flipped), handler_(std::move(handler)) {}

NSImage::~NSImage() = default;

Ref<NSImage> NSImage::imageWithSize(CGSize size, bool flipped, DrawingHandler handler) {
  return make<NSImage>(size, flipped, std::move(handler));
}

Ref<NSImage> NSImage::initWithData(std::span<const std::byte> bytes) {
  const Ref<NSImageRep> representation = representationOf(bytes);
  if (!representation) return nullptr;
  auto image = make<NSImage>(representation->size());
  image->addRepresentation(representation);
  return image;
}

Ref<NSImage> NSImage::imageNamed(const std::string& name) {
  const auto found = namedImages().find(name);
  return found == namedImages().end() ? nullptr : found->second;
}

void NSImage::setImageNamed(const std::string& name, Ref<NSImage> image) {
  if (image) namedImages()[name] = std::move(image);
  else namedImages().erase(name);
}

void NSImage::addRepresentation(Ref<NSImageRep> representation) { representations_.push_back(std::move(representation)); }

const NSImageRep* NSImage::representationToDraw() const {
  if (handler_) return nullptr;
  const NSImageRep* best = nullptr;
  for (const Ref<NSImageRep>& candidate : representations_)
    if ((candidate->encoded() || candidate->pixels()) && (!best || candidate->pixelsWide() > best->pixelsWide()))
      best = candidate.get();
  return best;
}

void NSImage::drawInRect(CGRect rect) { drawInRect(rect, {}); }

void NSImage::drawInRect(CGRect rect, const Drawing& drawing) {
  const Ref<NSGraphicsContext> graphics = NSGraphicsContext::currentContext();
  if (!graphics || NSIsEmptyRect(rect) || NSIsEmptyRect({{}, size_})) return;
  CGContext& context = graphics->CGContext();
  const bool isWhole = drawing.fromRect == NSZeroRect;
  const bool isTurned = graphics->isFlipped() && drawing.respectFlipped;
  // Where it does not simply lie over what is there, it is drawn as one picture.
  const bool isPlain = drawing.operation == NSCompositingOperationSourceOver && drawing.fraction >= 1;
  if (isWhole && isPlain && !isTurned) {
    drawInContext(context, rect);
    return;
  }
  const GraphicsStateScope state(context);
  if (isTurned) context.concat({1, 0, 0, -1, 0, 2 * rect.origin.y + rect.size.height});

  // The part fills the rectangle, so the whole image fills a larger one around it.
  const CGRect part = isWhole ? CGRect{{}, size_} : drawing.fromRect;
  if (NSIsEmptyRect(part)) return;
  const CGFloat xScale = rect.size.width / part.size.width, yScale = rect.size.height / part.size.height;
  const CGRect whole{rect.origin.x - part.origin.x * xScale, rect.origin.y - part.origin.y * yScale, size_.width * xScale,
                     size_.height * yScale};

  if (!isWhole || !isPlain) context.clipRect(rect);
  if (isPlain) {
    drawInContext(context, whole);
    return;
  }
  context.setAlpha(drawing.fraction);
  context.setBlendMode(blendModeForOperation(drawing.operation));
  context.beginTransparencyLayer();
  const AtEndOfScope layer([&] { context.endTransparencyLayer(); });
  drawInContext(context, whole);
}

void NSImage::drawInContext(CGContext& context, CGRect rect) {
  if (NSIsEmptyRect(rect)) return;
  if (!handler_) {
    const NSImageRep* best = representationToDraw();
    const std::shared_ptr<const backend::ImagePixels> pixels = best ? best->pixels() : nullptr;
    if (!pixels) return;
    context.drawImage(*pixels, {0, 0, static_cast<CGFloat>(pixels->width), static_cast<CGFloat>(pixels->height)}, rect);
    return;
  }
  if (NSIsEmptyRect({{}, handlerSize_})) return;
  const GraphicsStateScope scope(context);
  context.clipRect(rect);
  // Shapes that lie over each other do not show through.
  const bool isPale = context.alpha() < 1;
  if (isPale) context.beginTransparencyLayer();
  const AtEndOfScope layer([&] {
    if (isPale) context.endTransparencyLayer();
  });
  const CGFloat xScale = rect.size.width / handlerSize_.width, yScale = rect.size.height / handlerSize_.height;
  context.concat(
      CGAffineTransform::scale(xScale, yScale).then(CGAffineTransform::translation(rect.origin.x, rect.origin.y)));
  if (handlerIsFlipped_) context.concat({1, 0, 0, -1, 0, handlerSize_.height});
  const CurrentContextScope current(NSGraphicsContext::graphicsContextWithCGContext(context, handlerIsFlipped_));
  handler_({{}, handlerSize_});
}

}  // namespace tessaluna::platform
