#include <cstdio>
#include <string>

#include "tessaluna/backends/recording/RecordingCanvas.h"
#include "tools/artwork/Command.h"
#include "tools/artwork/Figure.h"

namespace artwork {

namespace {

void printOperations(const Arguments& arguments) {
  const Figure figure = Figure::parse(arguments);
  tessaluna::backend::recording::RecordingCanvas canvas;
  figure.draw(canvas);

  std::string text = "[\n";
  for (const std::string& line : canvas.lines()) {
    if (text.size() > 2) text += ",\n";
    text += line;
  }
  text += canvas.lines().empty() ? "]\n" : "\n]\n";
  std::fputs(text.c_str(), stdout);
}

constexpr Option options[] = {{"--frame"}};

}  // namespace

const Command opsCommand = {
    .name = "ops",
    .usage = "NAME [--frame X,Y,W,H] [--FLAG true|false]...",
    .summary = "Prints what a routine draws: a JSON array of operations, one per line, with absolute coordinates.",
    .options = options,
    .routineFlags = RoutineFlags::Accepted,
    .run = printOperations,
};

}  // namespace artwork
