#include "gallery/Arguments.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <utility>

namespace gallery {

namespace {

constexpr double minScale = 0.5, maxScale = 4;
constexpr double minWidth = 300, maxWidth = 8000;

std::string quoted(std::string_view text) { return '\'' + std::string(text) + '\''; }

std::string pageNames() {
  std::string names;
  for (const Page& page : pages()) {
    if (!names.empty()) names += ", ";
    names += page.name;
  }
  return names;
}

// Absent unless the whole text is one number within the limits.
std::optional<double> numberIn(std::string_view text, double low, double high) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number >= low && number <= high ? std::optional(number) : std::nullopt;
}

constexpr std::string_view optionsWithValue[] = {"--page", "--screenshot", "--screenshots", "--scale", "--width"};

// After these the program exits, so that only one of them can be given.
using Task = Arguments::Task;
constexpr std::pair<std::string_view, Task> tasks[] = {{"--list-pages", Task::ListPages},
                                                       {"--help", Task::ShowHelp},
                                                       {"--screenshot", Task::OneScreenshot},
                                                       {"--screenshots", Task::AllScreenshots}};

// Takes one option into the arguments; returns what is wrong with it.
std::optional<std::string> take(std::string_view name, std::string_view value, Arguments& arguments) {
  if (const auto* task = std::ranges::find(tasks, name, &std::pair<std::string_view, Task>::first);
      task != std::end(tasks)) {
    if (arguments.task != Task::ShowWindow)
      return std::string(name) + " cannot be combined with another option after which the program exits";
    arguments.task = task->second;
    arguments.output = value;
  } else if (name == "--page") {
    arguments.page = findPage(value);
    if (!arguments.page) return "unknown page " + quoted(value) + "; the pages are: " + pageNames();
  } else if (name == "--scale") {
    const std::optional<double> scale = numberIn(value, minScale, maxScale);
    if (!scale) return "--scale takes a number from 0.5 to 4, not " + quoted(value);
    arguments.scale = *scale;
  } else if (name == "--width") {
    const std::optional<double> width = numberIn(value, minWidth, maxWidth);
    if (!width) return "--width takes a number from 300 to 8000, not " + quoted(value);
    arguments.width = static_cast<int>(*width);
  } else if (name == "--light" || name == "--dark") {
    arguments.theme = name == "--light" ? Theme::Light : Theme::Dark;
  } else if (name == "--log-actions") {
    arguments.logsActions = true;
  } else {
    return "unknown option " + quoted(name) + "; --help lists the options";
  }
  return std::nullopt;
}

}  // namespace

std::string_view helpText() {
  return "tessaluna-gallery [option]...\n"
         "  --page NAME          begin with this page, without the splash\n"
         "  --list-pages         print the names of the pages\n"
         "  --screenshot FILE    write a picture of the page as a PNG file, and exit\n"
         "  --screenshots DIR    write a picture of every page into the folder, and exit\n"
         "  --scale S            multiply the desktop's device pixels per point (0.5 to 4)\n"
         "  --width W            width of the window, in points (300 to 8000)\n"
         "  --light, --dark      use the gallery's own colors instead of the desktop's\n"
         "  --log-actions        print what the controls report, and where they are on the screen\n"
         "  --help               print this\n";
}

std::variant<Arguments, BadArguments> parseArguments(std::span<const char* const> arguments) {
  Arguments result;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view name = arguments[i];
    std::string_view value;
    if (std::ranges::find(optionsWithValue, name) != std::end(optionsWithValue)) {
      if (++i == arguments.size() || *arguments[i] == 0) return BadArguments{std::string(name) + " needs a value"};
      value = arguments[i];
    }
    if (const std::optional<std::string> complaint = take(name, value, result)) return BadArguments{*complaint};
  }
  if (result.task == Task::AllScreenshots && result.page)
    return BadArguments{"--screenshots takes all pages; --page goes with --screenshot"};
  return result;
}

}  // namespace gallery
