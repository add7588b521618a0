// A control over a level's cell. Where it is editable, a press or drag sets the value, and so do the arrow keys, Home and End;
// each sends the action. Where it is not, it lets the mouse through to the view under it.
#pragma once

#include "tessaluna/platform/cells/NSLevelIndicatorCell.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

class NSLevelIndicator : public NSControl {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSLevelIndicator(CGRect frame) : NSControl(frame) {}
  explicit NSLevelIndicator(NSCoder& coder) : NSControl(coder) {}

  // These are the cell's; the setters ask for a redraw, and do nothing with a cell of another class.
  void setLevelIndicatorStyle(NSLevelIndicatorStyle style);
  void setMinValue(double value);
  void setMaxValue(double value);
  void setWarningValue(double value);
  void setCriticalValue(double value);
  void setNumberOfTickMarks(std::size_t count);
  void setNumberOfMajorTickMarks(std::size_t count);
  void setTickMarkPosition(NSTickMarkPosition position);
  bool isEditable() const { return levelCell() && levelCell()->isEditable(); }
  void setEditable(bool isEditable);

  bool acceptsFirstResponder() const override { return isEditable() && isEnabled(); }
  void mouseDown(const Ref<NSEvent>& event) override;
  void keyDown(const Ref<NSEvent>& event) override;

 protected:
  Ref<NSCell> makeCell() override { return make<NSLevelIndicatorCell>(); }
  Ref<NSCell> makeCell(NSCoder& coder) override { return make<NSLevelIndicatorCell>(coder); }

 private:
  NSLevelIndicatorCell* levelCell() const { return dynamic_cast<NSLevelIndicatorCell*>(cell().get()); }
  template <class Cell, class Argument>
  void change(void (Cell::*setter)(Argument), Argument value);
};

}  // namespace tessaluna::platform
