// What the views with a background share, whatever view they are otherwise.
#pragma once

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"

namespace TessalunaUIKit {

template <class Base>
class FilledView : public Base {
 public:
  explicit FilledView(tessaluna::platform::CGRect frame) : Base(frame) {
    backgroundColor_ = tessaluna::platform::NSColor::lightGrayColor();
  }
  // The color is that of a new view, whatever an archive holds; interface files set it as a property.
  explicit FilledView(tessaluna::platform::NSCoder& coder) : Base(coder) {
    coder.overlookKeys({"backgroundColor"});
    backgroundColor_ = tessaluna::platform::NSColor::lightGrayColor();
  }

  // Light gray initially. The setter requests no redraw: the host does. Drawing with a null color stops the program.
  const tessaluna::platform::Ref<tessaluna::platform::NSColor>& backgroundColor() const {
    return backgroundColor_.optional();
  }
  void setBackgroundColor(tessaluna::platform::Ref<tessaluna::platform::NSColor> color) {
    backgroundColor_ = std::move(color);
  }

  // Fills the rectangle that is to be redrawn, not the bounds.
  void drawRect(tessaluna::platform::CGRect rect) override {
    backgroundColor_->setFill();
    tessaluna::platform::NSRectFill(rect);
    Base::drawRect(rect);
  }

  // Whatever the color's alpha: nothing under the view is drawn.
  bool isOpaque() const override { return true; }

 private:
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSColor>> backgroundColor_{"backgroundColor"};
};

}  // namespace TessalunaUIKit
