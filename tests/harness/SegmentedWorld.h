// A segmented control in a window, with a cell that says where its segments were drawn.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace harness {

// Draws no label and remembers where the segments were drawn.
class ProbeSegmentedCell : public tessaluna::platform::NSSegmentedCell {
 public:
  using tessaluna::platform::NSSegmentedCell::NSSegmentedCell;
  tessaluna::platform::Ref<tessaluna::platform::NSCell> copy() const override {
    return tessaluna::platform::make<ProbeSegmentedCell>(*this);
  }
  tessaluna::platform::CGFloat widthForSegment(std::size_t segment) const override {
    return widths.empty() ? tessaluna::platform::NSSegmentedCell::widthForSegment(segment) : widths.at(segment);
  }
  void drawSegment(std::size_t, tessaluna::platform::CGRect frame, tessaluna::platform::NSView&) override {
    drawn.push_back(frame);
  }
  std::vector<tessaluna::platform::CGFloat> widths;
  std::vector<tessaluna::platform::CGRect> drawn;
};

// Three segments of 60, 40 and 100 points in a control of 200 by 24 at (0, 100); a character is 5 points wide.
class SegmentedWorld : public StillWorld {
 protected:
  SegmentedWorld() {
    control->setCell(cell);
    cell->setFont(tessaluna::platform::NSFont::systemFontOfSize(10));
    cell->setSegmentCount(3);
    for (const auto& [label, index] : {std::pair("Artists.", 0), std::pair("Hits", 1), std::pair("All of an artist", 2)})
      control->setLabelForSegment(label, static_cast<std::size_t>(index));
    control->setTarget(target);
    control->setAction("act:");
    target->onAct = [this] { selections.push_back(control->selectedSegment()); };
    window = showWindowWith(control);
  }

  // In the window, in the middle of what was drawn as the segment.
  tessaluna::platform::CGPoint middleOf(std::size_t segment) {
    cell->drawn.clear();
    recordingOf([&] { control->drawRect(control->bounds()); });
    return control->convertPointToView({tessaluna::platform::CGRectGetMidX(cell->drawn.at(segment)), 12}, nullptr);
  }
  void focus() { window->makeFirstResponder(control.get()); }
  tessaluna::platform::NSAccessibility& element(std::size_t segment) const {
    return *tessaluna::platform::accessibilityOf(cell->accessibilityChildren().value().at(segment));
  }

  tessaluna::platform::Ref<tessaluna::platform::NSSegmentedControl> control =
      tessaluna::platform::make<tessaluna::platform::NSSegmentedControl>(tessaluna::platform::CGRect{0, 100, 200, 24});
  tessaluna::platform::Ref<ProbeSegmentedCell> cell = tessaluna::platform::make<ProbeSegmentedCell>();
  tessaluna::platform::Ref<ActionProbe> target = tessaluna::platform::make<ActionProbe>();
  std::vector<std::optional<std::size_t>> selections;  // at each action
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window;
};

}  // namespace harness
