#include "tessaluna/uikit/suggestions/FlatTextFieldCell.h"

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/windows/NSApplication.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&FlatTextFieldCell::setBorderColor, "borderColor">()};

constexpr CGFloat outerRadius = 3.6, innerRadius = 2.6;
constexpr CGFloat mutedFraction = 0.7;  // of light gray

// By the ground of a stock field: this one is white then, unless its colors follow the palette.
bool isWhiteOnDarkDesktop() {
  if (neutralsFollowPalette()) return false;
  const auto ground = NSColor::controlBackgroundColor()->components();
  return 0.299 * ground.red + 0.587 * ground.green + 0.114 * ground.blue < 0.5;
}

Ref<NSColor> darkText() { return NSColor::colorWithCalibratedWhite(0, 0.85); }
Ref<NSColor> dimmedText() { return NSColor::colorWithCalibratedWhite(0, 0.35); }
Ref<NSColor> paleSelection() { return NSColor::colorWithCalibratedRed(0.7, 0.84, 1, 1); }

}  // namespace

const ClassInfo FlatTextFieldCell::staticClassInfo{.name = "TessalunaUIKit.FlatTextFieldCell",
                                                   .base = &SuggestibleTextFieldCell::staticClassInfo,
                                                   .properties = properties};

FlatTextFieldCell::FlatTextFieldCell(NSCoder& coder) : SuggestibleTextFieldCell(coder) {
  coder.overlookKeys({"borderColor"});
  borderColor_ = NSColor::blackColor();
  setDrawsBackground(false);
}

FlatTextFieldCell::FlatTextFieldCell(std::string text) : SuggestibleTextFieldCell(std::move(text)) {
  stopUnimplementedInitializer("TessalunaUIKit.FlatTextFieldCell", "init(textCell:)");
}

Ref<NSColor> FlatTextFieldCell::plainTextColor() const {
  if (!isWhiteOnDarkDesktop()) return SuggestibleTextFieldCell::plainTextColor();
  if (!isEnabled()) return dimmedText();
  return textColor() ? textColor() : darkText();
}

Ref<NSColor> FlatTextFieldCell::placeholderColor() const {
  return isWhiteOnDarkDesktop() ? dimmedText() : SuggestibleTextFieldCell::placeholderColor();
}

Ref<NSText> FlatTextFieldCell::setUpFieldEditorAttributes(const Ref<NSText>& editor) {
  const Ref<NSText> ready = SuggestibleTextFieldCell::setUpFieldEditorAttributes(editor);
  if (isWhiteOnDarkDesktop()) {
    ready->setInsertionPointColor(darkText());
    ready->setSelectedTextBackgroundColor(paleSelection());
  }
  return ready;
}

void FlatTextFieldCell::drawWithFrame(CGRect frame, NSView& view) {
  if (!NSApp) stopProgram("TessalunaUIKit.FlatTextFieldCell: drawn without NSApp");
  if (NSApp->isActive()) {
    borderColor_->setFill();
  } else if (const auto muted = borderColor_->blendedColorWithFraction(mutedFraction, NSColor::lightGrayColor())) {
    muted->setFill();
  }
  // Intentional: of the frame only the size counts, so the shapes stay at the view's corner.
  const CGFloat width = frame.size.width, height = frame.size.height;
  NSBezierPath::bezierPathWithRoundedRect({0, 1, width, height - 1}, outerRadius, outerRadius)->fill();
  NSColor::whiteColor()->set();
  NSBezierPath::bezierPathWithRoundedRect({1, 2, width - 2, height - 3}, innerRadius, innerRadius)->fill();
  drawInteriorWithFrame(frame, view);
}

}  // namespace TessalunaUIKit
