// A segmented cell without boxes: each segment is its label, centered over a hairline, and the selected one is over a
// thick colored bar. The segments fill the control in proportion to their labels.
#pragma once

#include <optional>

#include "tessaluna/platform/cells/NSSegmentedCell.h"

namespace TessalunaUIKit {

class UnderlinedSegmentedCell : public tessaluna::platform::NSSegmentedCell {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // Each starts dark with a blue bar, whatever an archive holds; both are properties of interface files.
  UnderlinedSegmentedCell();
  explicit UnderlinedSegmentedCell(std::string text);
  explicit UnderlinedSegmentedCell(tessaluna::platform::Ref<tessaluna::platform::NSImage> image);
  explicit UnderlinedSegmentedCell(tessaluna::platform::NSCoder& coder);
  tessaluna::platform::Ref<NSCell> copy() const override {
    return tessaluna::platform::make<UnderlinedSegmentedCell>(*this);
  }

  // Colors for a dark ground, or for a light one. Neither setter requests a redraw.
  bool useDarkTheme() const { return useDarkTheme_; }
  void setUseDarkTheme(bool useDarkTheme) { useDarkTheme_ = useDarkTheme; }
  // Of the bar. Drawing it with a null color stops the program.
  const tessaluna::platform::Ref<tessaluna::platform::NSColor>& underlineColor() const { return underlineColor_.optional(); }
  void setUnderlineColor(tessaluna::platform::Ref<tessaluna::platform::NSColor> color) {
    underlineColor_ = std::move(color);
  }

  // The segment on which the mouse went down, enabled or not, until it goes up; absent otherwise. Setting it requests no redraw.
  std::optional<std::size_t> pressedSegment() const { return pressedSegment_.value; }
  void setPressedSegment(std::optional<std::size_t> segment) { pressedSegment_.value = segment; }

  // In points, not rounded: the label and ten points at each side, whatever width or image was set; 0 for a segment without a
  // label.
  tessaluna::platform::CGFloat widthForSegment(std::size_t segment) const override;
  // Draws the segments one after the other, and no background.
  void drawWithFrame(tessaluna::platform::CGRect frame, tessaluna::platform::NSView& view) override;
  // The label in the first three quarters of the height, cut off there, and the line near the end of the frame; nothing for
  // a segment without a label. A press changes only the label's color.
  void drawSegment(std::size_t segment, tessaluna::platform::CGRect frame, tessaluna::platform::NSView& view) override;

  // Three dots over the line, in the colors of a label.
  void drawOverflow(tessaluna::platform::CGRect frame, tessaluna::platform::NSView& view, bool hasSelected) override;

  bool startTrackingAt(tessaluna::platform::CGPoint start, tessaluna::platform::NSView& view) override;
  void stopTracking(tessaluna::platform::CGPoint last, tessaluna::platform::CGPoint stop, tessaluna::platform::NSView& view,
                    bool mouseIsUp) override;

 private:
  tessaluna::platform::Ref<tessaluna::platform::NSFont> labelFont() const;
  tessaluna::platform::Ref<tessaluna::platform::NSColor> labelColor(bool isPressed, bool isSelected) const;
  void drawLabel(const std::string& label, tessaluna::platform::CGRect frame,
                 const tessaluna::platform::Ref<tessaluna::platform::NSColor>& color) const;
  void drawLine(tessaluna::platform::CGRect frame, bool isSelected) const;

  tessaluna::platform::Uncopied<std::optional<std::size_t>> pressedSegment_;
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSColor>> underlineColor_{"underlineColor"};
  bool useDarkTheme_ = true;
};

}  // namespace TessalunaUIKit
