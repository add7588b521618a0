// The gallery's command line.
#pragma once

#include <span>
#include <string>
#include <variant>

#include "gallery/Pages.h"
#include "gallery/look.h"

namespace gallery {

struct Arguments {
  enum class Task { ShowWindow, ListPages, ShowHelp, OneScreenshot, AllScreenshots };
  Task task = Task::ShowWindow;
  const Page* page = nullptr;  // null: the first page
  std::string output;          // the file of one screenshot, or the folder of all pages
  double scale = 1;            // multiplies the desktop's own
  Theme theme = Theme::Desktop;
  int width = 0;             // of the window, in points; 0 keeps its own
  bool logsActions = false;  // to standard output
};

// What is wrong with a command line, in one line.
struct BadArguments {
  std::string complaint;
};

std::variant<Arguments, BadArguments> parseArguments(std::span<const char* const> arguments);
std::string_view helpText();

}  // namespace gallery
