// A white panel with a thin rounded frame, whose color is muted while the application is not active. It shows the muted color
// at the next redraw that something else causes.
#pragma once

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

class BorderedView : public tessaluna::platform::NSView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // Not supported: stops the program. The view comes from interface files.
  explicit BorderedView(tessaluna::platform::CGRect frame);
  // The color is black, whatever an archive holds; interface files set it as a property.
  explicit BorderedView(tessaluna::platform::NSCoder& coder);

  // Black initially. Each assignment requests a redraw. Drawing with a null color stops the program.
  const tessaluna::platform::Ref<tessaluna::platform::NSColor>& borderColor() const { return borderColor_.optional(); }
  void setBorderColor(tessaluna::platform::Ref<tessaluna::platform::NSColor> color);

  // Fills the size of the frame but for its lowest row of points. Without an application the program stops.
  void drawRect(tessaluna::platform::CGRect rect) override;

 private:
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSColor>> borderColor_{"borderColor"};
};

}  // namespace TessalunaUIKit
