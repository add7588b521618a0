#include "tessaluna/uikit/cells/DotsLevelIndicatorCell.h"

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&DotsLevelIndicatorCell::setBorderColor, "borderColor">()};

[[noreturn]] void stop(std::string_view initializer) {
  stopUnimplementedInitializer("TessalunaUIKit.DotsLevelIndicatorCell", initializer);
}

}  // namespace

const ClassInfo DotsLevelIndicatorCell::staticClassInfo{.name = "TessalunaUIKit.DotsLevelIndicatorCell",
                                                        .base = &NSLevelIndicatorCell::staticClassInfo,
                                                        .properties = properties};

DotsLevelIndicatorCell::DotsLevelIndicatorCell(NSCoder& coder)
    : NSLevelIndicatorCell(coder), borderColor_(NSColor::blackColor()) {
  coder.overlookKeys({"borderColor"});
  setHighlighted(true);
}

DotsLevelIndicatorCell::DotsLevelIndicatorCell() { stop("init()"); }

DotsLevelIndicatorCell::DotsLevelIndicatorCell(NSLevelIndicatorStyle style) : NSLevelIndicatorCell(style) {
  stop("init(levelIndicatorStyle:)");
}

DotsLevelIndicatorCell::DotsLevelIndicatorCell(std::string text) : NSLevelIndicatorCell(std::move(text)) {
  stop("init(textCell:)");
}

DotsLevelIndicatorCell::DotsLevelIndicatorCell(Ref<NSImage> image) : NSLevelIndicatorCell(std::move(image)) {
  stop("init(imageCell:)");
}

}  // namespace TessalunaUIKit
