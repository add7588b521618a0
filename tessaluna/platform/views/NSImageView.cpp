#include "tessaluna/platform/views/NSImageView.h"

#include <algorithm>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/views/PreparedImage.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

constexpr Property imageViewProperties[] = {
    property<&NSImageView::setImage, "image">(), property<&NSImageView::setImageScaling, "imageScaling">(),
    property<&NSImageView::setImageFrameStyle, "imageFrameStyle">(), property<&NSImageView::setEditable, "editable">(),
    property<&NSImageView::setPreparesImages, "preparesImages">()};

}  // namespace

const ClassInfo NSImageView::staticClassInfo{
    .name = "NSImageView", .base = &NSView::staticClassInfo, .properties = imageViewProperties};

NSImageView::NSImageView(NSCoder& coder) : NSView(coder) {
  if (const auto name = coder.decodeStringForKey("imageName")) image_ = NSImage::imageNamed(*name);
  imageScaling_ = coder.decodeEnumForKey<NSImageScaling>("imageScaling").value_or(imageScaling_);
  imageFrameStyle_ = coder.decodeEnumForKey<NSImageFrameStyle>("imageFrameStyle").value_or(imageFrameStyle_);
  isEditable_ = coder.decodeBoolForKey("editable");
}

void NSImageView::setImage(Ref<NSImage> image) {
  if (image != image_) {
    before_ = preparesImages_ && image && PreparedImage::isNeededFor(*image) ? pictureToDraw() : nullptr;
    prepared_ = nullptr;
    image_ = std::move(image);
  }
  invalidateIntrinsicContentSize();
  setNeedsDisplay(true);
}

void NSImageView::setPreparesImages(bool prepares) {
  preparesImages_ = prepares;
  setNeedsDisplay(true);
}

void NSImageView::prepareImageForSize(CGSize size) {
  if (!preparesImages_ || !image_ || !(size.width > 0 && size.height > 0) || !PreparedImage::isNeededFor(*image_)) return;
  const CGFloat scale = window() ? window()->backingScaleFactor() : 1;
  const CGSize pixels{size.width * scale, size.height * scale};
  if (prepared_ && prepared_->serves(pixels)) return;
  if (prepared_ && prepared_->picture()) before_ = prepared_->picture();
  const std::weak_ptr<NSObject> weak = weak_from_this();
  prepared_ = PreparedImage::of(image_, pixels, [weak] {
    if (const auto self = std::static_pointer_cast<NSImageView>(weak.lock())) self->setNeedsDisplay(true);
  });
}

Ref<NSImage> NSImageView::pictureToDraw() {
  if (!image_ || !preparesImages_ || !PreparedImage::isNeededFor(*image_)) return image_;
  if (!prepared_ || !prepared_->isDone()) return before_;
  before_ = nullptr;
  return prepared_->picture();
}

void NSImageView::setImageScaling(NSImageScaling scaling) {
  imageScaling_ = scaling;
  setNeedsDisplay(true);
}

void NSImageView::setImageFrameStyle(NSImageFrameStyle style) {
  imageFrameStyle_ = style;
  setNeedsDisplay(true);
}

CGRect NSImageView::imageRectForSize(CGSize size) const {
  const CGFloat edge = imageFrameStyle_ == NSImageFrameNone ? 0 : 1;
  const CGRect room = NSInsetRect(bounds(), edge, edge);
  if (imageScaling_ == NSImageScaleAxesIndependently) return room;
  CGFloat factor = 1;
  if (imageScaling_ != NSImageScaleNone && size.width > 0 && size.height > 0) {
    factor = std::max(0.0, std::min(room.size.width / size.width, room.size.height / size.height));
    if (imageScaling_ == NSImageScaleProportionallyDown) factor = std::min(factor, 1.0);
  }
  const CGSize scaled{size.width * factor, size.height * factor};
  return {{CGRectGetMidX(room) - scaled.width * 0.5, CGRectGetMidY(room) - scaled.height * 0.5}, scaled};
}

CGSize NSImageView::intrinsicContentSize() const { return image_ ? image_->size() : NSView::intrinsicContentSize(); }

void NSImageView::drawRect(CGRect) {
  if (image_) prepareImageForSize(imageRectForSize(image_->size()).size);
  if (const Ref<NSImage> picture = pictureToDraw()) picture->drawInRect(imageRectForSize(picture->size()));
  if (imageFrameStyle_ == NSImageFrameNone) return;
  NSColor::controlTextColor()->colorWithAlphaComponent(0.3)->setStroke();
  NSBezierPath::bezierPathWithRect(NSInsetRect(bounds(), 0.5, 0.5))->stroke();
}

void NSImageView::mouseDown(const Ref<NSEvent>& event) {
  if (!isEditable_) NSView::mouseDown(event);
}
void NSImageView::mouseDragged(const Ref<NSEvent>& event) {
  if (!isEditable_) NSView::mouseDragged(event);
}
void NSImageView::mouseUp(const Ref<NSEvent>& event) {
  if (!isEditable_) NSView::mouseUp(event);
}

}  // namespace tessaluna::platform
