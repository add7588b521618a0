// What a drawing does, as the recording canvas records it: one line per operation.
#pragma once

#include <string>
#include <vector>

#include "tessaluna/backends/recording/RecordingCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace harness {

using Lines = std::vector<std::string>;

template <class Draw>
Lines recordingOf(Draw draw) {
  tessaluna::backend::recording::RecordingCanvas canvas;
  {
    const tessaluna::platform::CanvasScope scope(canvas);
    draw();
  }
  return canvas.lines();
}

// The lines of one operation.
inline Lines only(std::string_view operation, const Lines& lines) {
  const std::string start = "{\"op\":\"" + std::string(operation) + "\"";
  Lines result;
  for (const std::string& line : lines)
    if (line.starts_with(start + ",") || line.starts_with(start + "}")) result.push_back(line);
  return result;
}

}  // namespace harness
