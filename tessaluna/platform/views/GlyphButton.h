// A push button that is nothing but a glyph as large as its bounds. In a layout it is as large as it was made, so that the glyph
// keeps its proportions; the size of a stock button would be that of a title, which it does not show.
#pragma once

#include "tessaluna/platform/views/NSButton.h"

namespace tessaluna::platform {

class GlyphButton : public NSButton {
 public:
  explicit GlyphButton(CGRect frame) : NSButton(frame), size_(frame.size) {}
  explicit GlyphButton(NSCoder& coder) : NSButton(coder), size_(GlyphButton::frame().size) {}

  // One that was made without a size has that of a stock button.
  CGSize intrinsicContentSize() const override {
    const bool hasSize = size_.width > 0 && size_.height > 0;
    return hasSize ? size_ : NSButton::intrinsicContentSize();
  }

 private:
  CGSize size_;
};

}  // namespace tessaluna::platform
