// The background of one row of a completion pop-up, in the selection's color while it is highlighted.
#pragma once

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

class HighlightingView : public tessaluna::platform::NSView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit HighlightingView(tessaluna::platform::CGRect frame) : NSView(frame) {}
  explicit HighlightingView(tessaluna::platform::NSCoder& coder) : NSView(coder) { coder.overlookKeys({"isHighlighted"}); }

  // The row is the selected one. Each assignment sets the background style of the cells of the row's text fields, and
  // requests a redraw.
  bool isHighlighted() const { return isHighlighted_; }
  void setIsHighlighted(bool isHighlighted);

  void drawRect(tessaluna::platform::CGRect dirtyRect) override;

  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(tessaluna::platform::NSAccessibilityGroupRole); }
  // Additions: pressing a row of a pop-up selects it without notifying the controller's target. Choosing it does what a click does: the
  // row is selected first if it is not, with a notification of the target, and the pop-up ends with the field's action.
  static constexpr std::string_view chooseAction = "choose";
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;

 private:
  bool isHighlighted_ = false;
};

// Passes a change of the selection to a row's text fields; only to those directly in the row.
void setBackgroundStyleOfTextFields(const HighlightingView& row, bool isHighlighted);

}  // namespace TessalunaUIKit
