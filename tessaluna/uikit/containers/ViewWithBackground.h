// A view filled with one color. While a text field is edited in its window, Command with the left or the right arrow moves the
// insertion point to the start or the end of the line, before anybody takes the key as an equivalent.
#pragma once

#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/uikit/containers/FilledView.h"

namespace TessalunaUIKit {

class ViewWithBackground : public FilledView<tessaluna::platform::NSView> {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  using FilledView::FilledView;

  // Any other key is passed to the views inside.
  bool performKeyEquivalent(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
};

}  // namespace TessalunaUIKit
