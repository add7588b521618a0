// A table's cell view filled with one color.
#pragma once

#include "tessaluna/platform/views/NSTableCellView.h"
#include "tessaluna/uikit/containers/FilledView.h"

namespace TessalunaUIKit {

class TableCellViewWithBackground : public FilledView<tessaluna::platform::NSTableCellView> {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  using FilledView::FilledView;
};

}  // namespace TessalunaUIKit
