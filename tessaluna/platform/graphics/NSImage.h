// A picture of some size in points. One made with a drawing handler holds no pixels: the handler runs whenever the image
// is rendered, so it stays vector at any size and on any screen scale. One made from bytes holds what they are decoded to.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/DrawingHandler.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/graphics/NSRect.h"

namespace tessaluna::platform {

class NSImage : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // The handler draws into the current context, in the rectangle (0, 0, size), y up unless flipped, and returns whether
  // it could. Nothing is drawn until the image is.
  static Ref<NSImage> imageWithSize(CGSize size, bool flipped, DrawingHandler handler);
  // Null for bytes that cannot be decoded. Needs a backend, or who decodes without one (backend/imageDecoder.h), as the icons of
  // a Qt program do; with neither the program stops. A picture of many pixels, more than a million, is decoded when it is first drawn and its bytes are kept
  // until then: the representation has the size that the file's header names, and one that turns out to be damaged draws nothing.
  static Ref<NSImage> initWithData(std::span<const std::byte> bytes);
  // An image that the host has given this name; null if none has it.
  static Ref<NSImage> imageNamed(const std::string& name);
  static void setImageNamed(const std::string& name, Ref<NSImage> image);

  // With no representation; one is added.
  explicit NSImage(CGSize size) : NSImage(size, false, {}) {}
  NSImage(CGSize size, bool flipped, DrawingHandler handler);
  ~NSImage() override;

  CGSize size() const { return size_; }
  void setSize(CGSize size) { size_ = size; }
  // Empty for an image with a handler.
  const std::vector<Ref<NSImageRep>>& representations() const { return representations_; }
  void addRepresentation(Ref<NSImageRep> representation);
  // That with the most pixels; the others are smaller renderings of the same. Null for an image with a handler, and without one
  // that has pixels.
  const NSImageRep* representationToDraw() const;

  // Renders the whole image into the rectangle, scaled to it and clipped by it; upright also in a flipped view, and as one
  // picture where the context's alpha makes it pale. Nothing outside a drawing pass.
  void drawInRect(CGRect rect);
  // A part of the image, in its points with y up; the zero rectangle means all of it. The fraction is the alpha that it is
  // drawn with. With respectFlipped false it is upside down in a flipped view. Hints are ignored.
  struct Drawing {
    CGRect fromRect = {};
    NSCompositingOperation operation = NSCompositingOperationSourceOver;
    CGFloat fraction = 1;
    bool respectFlipped = true;
  };
  void drawInRect(CGRect rect, const Drawing& drawing);
  // Without regard to what is flipped.
  void drawInContext(CGContext& context, CGRect rect);

 private:
  CGSize size_;
  CGSize handlerSize_;  // the space that the handler draws in; a later setSize scales it
  bool handlerIsFlipped_;
  DrawingHandler handler_;
  std::vector<Ref<NSImageRep>> representations_;
};

}  // namespace tessaluna::platform
