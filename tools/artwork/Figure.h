// A routine with its frame and the values of its flags: what a command line asks the tool to draw.
#pragma once

#include <memory>
#include <span>

#include "tessaluna/platform/backend/Canvas.h"
#include "tessaluna/uikit/stylekit/Routines.h"
#include "tools/artwork/Arguments.h"

namespace artwork {

class Figure {
 public:
  // Reads NAME, --FLAG, and --frame if it is given. Throws a UsageFailure for an unknown name or flag.
  static Figure parse(const Arguments& arguments);

  const TessalunaUIKit::Routine& routine() const { return *routine_; }
  std::span<const bool> flags() const { return {flags_.get(), routine_->flags.size()}; }
  tessaluna::platform::CGRect frame() const { return frame_; }
  void setFrame(tessaluna::platform::CGRect frame) { frame_ = frame; }

  // Runs the routine, or draws its image at the frame's size; without an image that stops the program.
  void draw(tessaluna::backend::Canvas& canvas) const;
  void drawImage(tessaluna::backend::Canvas& canvas) const;

 private:
  void setFlags(const Arguments& arguments);

  const TessalunaUIKit::Routine* routine_ = nullptr;
  std::unique_ptr<bool[]> flags_;
  tessaluna::platform::CGRect frame_;
};

}  // namespace artwork
