// An album's cover at the size of a thumbnail. A click enlarges it into a panel with the thumbnail's upper left corner, as
// large as the image has pixels and the screen has room to the right and below. An image with a drawing handler has no pixels,
// and its panel is empty. Another click closes the panel, and so does whatever takes the key status from it, or the end of the
// thumbnail. An image that is set meanwhile resizes it.
//
// Each representation of an image that is enlarged is set to one point per pixel, and stays so. Without a window, the panel is a
// child of none and has the frame (0, 0, 1400, 900).
#pragma once

#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/windows/NSWindowDelegate.h"
#include "tessaluna/uikit/coverart/CoverArtPanel.h"

namespace TessalunaUIKit {

class CoverArtThumbnailView : public tessaluna::platform::NSImageView, public tessaluna::platform::NSWindowDelegate {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit CoverArtThumbnailView(tessaluna::platform::CGRect frame) : NSImageView(frame) {}
  explicit CoverArtThumbnailView(tessaluna::platform::NSCoder& coder);
  ~CoverArtThumbnailView() override;

  // False, as initially: a pixel of the image is a point. True: it is a device pixel of the thumbnail's window. A panel that
  // is open takes notice with its next image.
  bool scaleToScreenResolution() const { return scaleToScreenResolution_; }
  void setScaleToScreenResolution(bool scales) { scaleToScreenResolution_ = scales; }

  // An addition: true lets a click in the panel and the Escape key close it, too, and a press on the thumbnail that takes the
  // key status from the panel closes it for good: its release opens no other. False initially. Counts for panels and images
  // that come after. (NSImageView has another one, preparesImages, which is that of the panel as well.)
  bool closesByClickAndEscape() const { return closesByClickAndEscape_; }
  void setClosesByClickAndEscape(bool closes) { closesByClickAndEscape_ = closes; }

  // An open panel shows the new image and takes its size; with a null image it shrinks to an empty square, as large as an image of
  // 64 by 64 pixels.
  void setImage(tessaluna::platform::Ref<tessaluna::platform::NSImage> image) override;

  // Nothing while none is open. The panel is gone at once, but for a millisecond a click does not open another one.
  void closeEnlargedView();

  void mouseDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  // Opens the panel of an image, or closes it; a null image opens none.
  void mouseUp(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  // Of the panel, whose delegate this is.
  void windowDidResignKey(const tessaluna::platform::Ref<tessaluna::platform::NSNotification>& notification) override;

  // Assistive clients press the image as a click does. To them the panel and the image in it have the thumbnail's name as it is
  // when the image is set or enlarged, and without one the main bundle's text for "Enlarged cover".
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;

 private:
  tessaluna::platform::CGRect coverArtPanelFrame(tessaluna::platform::CGSize size) const;
  tessaluna::platform::CGRect frameOfImage() const;
  tessaluna::platform::Ref<tessaluna::platform::NSImageView> makeContentView(tessaluna::platform::CGSize size);
  void toggle();
  void enlarge();
  bool takeClosingPress();

  tessaluna::platform::Ref<CoverArtPanel> coverArtPanel_;  // present means enlarged
  bool scaleToScreenResolution_ = false, closesByClickAndEscape_ = false;
  std::optional<double> pressedAt_, lostKeyAt_;  // by the backend's clock: the thumbnail, and the panel
};

}  // namespace TessalunaUIKit
