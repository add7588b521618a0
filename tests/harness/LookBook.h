// What windows show in several states, under a heading each, for one expected file.
#pragma once

#include <string>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tests/harness/expectedFile.h"
#include "tests/harness/recordingOf.h"

namespace harness {

class LookBook {
 public:
  explicit LookBook(tessaluna::backend::headless::HeadlessBackend& desktop) : desktop_(desktop) {}

  // Draws all of the window again, or what is in one of its views.
  void add(const std::string& heading, tessaluna::platform::NSWindow& window) { add(heading, *window.contentView()); }
  void add(const std::string& heading, tessaluna::platform::NSView& view) {
    desktop_.settle();
    view.setNeedsDisplay(true);
    desktop_.settle();
    lines_.push_back("# " + heading);
    for (const std::string& line : tessaluna::backend::headless::HeadlessWindow::of(*view.window()).paints().back().lines)
      lines_.push_back(line);
  }
  void expectSameAsFile(const std::string& path) const { harness::expectSameAsFile(path, lines_); }

 private:
  tessaluna::backend::headless::HeadlessBackend& desktop_;
  Lines lines_;
};

}  // namespace harness
