// Shows an image, scaled into its bounds. One that is not editable passes mouse events on. Unlike other controls it has y up
// and no cell.
#pragma once

#include "tessaluna/platform/foundation/EnumNames.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

class PreparedImage;

enum NSImageScaling {
  NSImageScaleProportionallyDown = 0,
  NSImageScaleAxesIndependently = 1,
  NSImageScaleNone = 2,
  NSImageScaleProportionallyUpOrDown = 3,
};

enum NSImageFrameStyle {
  NSImageFrameNone = 0,
  NSImageFramePhoto = 1,
  NSImageFrameGrayBezel = 2,
  NSImageFrameGroove = 3,
  NSImageFrameButton = 4,
};

template <>
struct EnumNames<NSImageScaling> {
  static constexpr NamedValue all[] = {{"proportionallyDown", NSImageScaleProportionallyDown},
                                       {"axesIndependently", NSImageScaleAxesIndependently},
                                       {"none", NSImageScaleNone},
                                       {"proportionallyUpOrDown", NSImageScaleProportionallyUpOrDown}};
};
template <>
struct EnumNames<NSImageFrameStyle> {
  static constexpr NamedValue all[] = {{"none", NSImageFrameNone},
                                       {"photo", NSImageFramePhoto},
                                       {"grayBezel", NSImageFrameGrayBezel},
                                       {"groove", NSImageFrameGroove},
                                       {"button", NSImageFrameButton}};
};

class NSImageView : public NSView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSImageView(CGRect frame) : NSView(frame) {}
  // Keys besides the view's: "imageName", "imageScaling", "imageFrameStyle", "editable".
  explicit NSImageView(NSCoder& coder);

  // Each asks for a redraw.
  const Ref<NSImage>& image() const { return image_; }
  virtual void setImage(Ref<NSImage> image);
  NSImageScaling imageScaling() const { return imageScaling_; }
  void setImageScaling(NSImageScaling scaling);
  NSImageFrameStyle imageFrameStyle() const { return imageFrameStyle_; }
  void setImageFrameStyle(NSImageFrameStyle style);  // any but none is a thin line around the image

  // An addition: true has images of many pixels decoded on another thread and reduced to what shows of them. Until then the view
  // draws what it drew before. False initially: an image is decoded when it is drawn, and keeps all its pixels.
  bool preparesImages() const { return preparesImages_; }
  void setPreparesImages(bool prepares);
  // Begins with it before the view is drawn, for the size of points; nothing where there is nothing to prepare.
  void prepareImageForSize(CGSize size);
  // What is drawn for the image now: the image, its reduced picture, or what goes before that; null for nothing.
  Ref<NSImage> pictureToDraw();
  // Drawn until there is an image.
  void setPictureBefore(Ref<NSImage> picture) { before_ = std::move(picture); }

  bool isEditable() const { return isEditable_; }
  void setEditable(bool isEditable) { isEditable_ = isEditable; }

  // Where an image of the size is, in the middle of the bounds.
  CGRect imageRectForSize(CGSize size) const;
  CGSize intrinsicContentSize() const override;
  void drawRect(CGRect rect) override;
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityImageRole); }
  bool mouseDownCanMoveWindow() const override { return !isEditable_; }
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;

 private:
  Ref<NSImage> image_;
  std::shared_ptr<PreparedImage> prepared_;  // of the image, if it needs that
  Ref<NSImage> before_;                      // drawn until the prepared picture is ready
  NSImageScaling imageScaling_ = NSImageScaleProportionallyDown;
  NSImageFrameStyle imageFrameStyle_ = NSImageFrameNone;
  bool isEditable_ = false, preparesImages_ = false;
};

}  // namespace tessaluna::platform
