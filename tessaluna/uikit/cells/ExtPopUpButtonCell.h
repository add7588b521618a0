// A pop-up button's cell as a flat rounded box with two chevrons, for a dark ground or a light one. A title that is too long ends
// in "…". The menu is a stock pop-up's.
#pragma once

#include "tessaluna/platform/cells/NSPopUpButtonCell.h"

namespace TessalunaUIKit {

class ExtPopUpButtonCell : public tessaluna::platform::NSPopUpButtonCell {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  ExtPopUpButtonCell() = default;
  ExtPopUpButtonCell(std::string title, bool pullsDown) : NSPopUpButtonCell(std::move(title), pullsDown) {}
  explicit ExtPopUpButtonCell(tessaluna::platform::NSCoder& coder);
  tessaluna::platform::Ref<NSCell> copy() const override { return tessaluna::platform::make<ExtPopUpButtonCell>(*this); }

  // Made in code it is for a dark ground, and from an archive for a light one until it is set; a property of interface files.
  // Setting it requests no redraw.
  bool useDarkTheme() const { return useDarkTheme_; }
  void setUseDarkTheme(bool useDarkTheme) { useDarkTheme_ = useDarkTheme; }

  // The title as far as it fits a width in points, then "…"; all of it where it is up to a point too wide. What is cut off is
  // counted in UTF-16 units.
  std::u16string shortenedTitle(tessaluna::platform::CGFloat width) const;

  // Neither depends on the state or the border of the stock cell.
  void drawBorderAndBackgroundWithFrame(tessaluna::platform::CGRect frame, tessaluna::platform::NSView& view) override;
  void drawTitleWithFrame(tessaluna::platform::CGRect frame, tessaluna::platform::NSView& view) override;

 private:
  tessaluna::platform::NSAttributes titleAttributes() const;

  bool useDarkTheme_ = true;
};

}  // namespace TessalunaUIKit
