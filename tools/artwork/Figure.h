// A routine with its frame and the values of its flags: what a command line asks to be drawn.
#pragma once

#include <memory>
#include <span>

#include "tessaluna/platform/backend/Canvas.h"
#include "tessaluna/uikit/stylekit/Routines.h"
#include "tools/artwork/Arguments.h"

namespace artwork {

class Figure {
 public:
  // By NAME and --FLAG, and --frame if it is given. Throws a UsageFailure for what the routine does not know.
  static Figure parse(const Arguments& arguments);

  const TessalunaUIKit::Routine& routine() const { return *routine_; }
  std::span<const bool> flags() const { return {flags_.get(), routine_->flags.size()}; }
  tessaluna::platform::CGRect frame() const { return frame_; }
  void setFrame(tessaluna::platform::CGRect frame) { frame_ = frame; }

  // Runs the routine, or draws its image at the frame's size, which stops where there is none.
  void draw(tessaluna::backend::Canvas& canvas) const;
  void drawImage(tessaluna::backend::Canvas& canvas) const;

 private:
  void setFlags(const Arguments& arguments);

  const TessalunaUIKit::Routine* routine_ = nullptr;
  std::unique_ptr<bool[]> flags_;
  tessaluna::platform::CGRect frame_;
};

}  // namespace artwork
