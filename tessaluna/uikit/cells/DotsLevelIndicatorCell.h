// A level's cell that is highlighted, so that a rating shows its missing stars as dots, and that keeps a color for the host.
// Comes from interface files only.
#pragma once

#include "tessaluna/platform/cells/NSLevelIndicatorCell.h"

namespace TessalunaUIKit {

class DotsLevelIndicatorCell : public tessaluna::platform::NSLevelIndicatorCell {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit DotsLevelIndicatorCell(tessaluna::platform::NSCoder& coder);
  // Not supported: each stops the program.
  DotsLevelIndicatorCell();
  explicit DotsLevelIndicatorCell(tessaluna::platform::NSLevelIndicatorStyle style);
  explicit DotsLevelIndicatorCell(std::string text);
  explicit DotsLevelIndicatorCell(tessaluna::platform::Ref<tessaluna::platform::NSImage> image);
  tessaluna::platform::Ref<NSCell> copy() const override { return tessaluna::platform::make<DotsLevelIndicatorCell>(*this); }

  // Stored for the host, who may draw with it: the library does not read it. Black initially, whatever an archive holds; a
  // property of interface files. Setting it requests no redraw.
  const tessaluna::platform::Ref<tessaluna::platform::NSColor>& borderColor() const { return borderColor_; }
  void setBorderColor(tessaluna::platform::Ref<tessaluna::platform::NSColor> color) { borderColor_ = std::move(color); }

 private:
  tessaluna::platform::Ref<tessaluna::platform::NSColor> borderColor_;
};

}  // namespace TessalunaUIKit
