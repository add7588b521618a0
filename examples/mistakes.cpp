// How a program logs its own mistakes: those that would stop it and those that would not.
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tessaluna/platform/events/ActionSender.h"
#include "tessaluna/platform/foundation/stopHandler.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/menus/NSMenu.h"

namespace {

void log(const std::string& line) { std::fprintf(stderr, "player: %s\n", line.c_str()); }

void setHandlers() {
  tessaluna::platform::setStopHandler([](std::string_view report) { log(std::string(report)); });
  tessaluna::platform::ActionSender::setUnansweredActionHandler(log);
  tessaluna::platform::NSLayoutConstraint::setConflictHandler(log);
}

// Runs a part of the program that may fail; the rest continues without it.
bool tryPart(void (*part)()) {
  tessaluna::platform::setStopHandler([](std::string_view report) { throw std::logic_error(std::string(report)); });
  bool isDone = true;
  try {
    part();
  } catch (const std::logic_error& error) {
    log(error.what());
    isDone = false;
  }
  setHandlers();
  return isDone;
}

}  // namespace

int main() {
  setHandlers();
  const bool isDone = tryPart([] { (void)tessaluna::platform::make<tessaluna::platform::NSMenu>()->itemAtIndex(0); });
  return isDone ? 1 : 0;
}
