#include "tessaluna/uikit/containers/TableCellViewWithBackground.h"

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&TableCellViewWithBackground::setBackgroundColor, "backgroundColor">()};

}  // namespace

const ClassInfo TableCellViewWithBackground::staticClassInfo{.name = "TessalunaUIKit.TableCellViewWithBackground",
                                                             .base = &NSTableCellView::staticClassInfo,
                                                             .properties = properties};

}  // namespace TessalunaUIKit
