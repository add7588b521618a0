#include "gallery/Arguments.h"

#include <charconv>
#include <optional>

namespace gallery {

namespace {

constexpr double smallestScale = 0.5, largestScale = 4;
constexpr double smallestWidth = 300, largestWidth = 8000;

std::string quoted(std::string_view text) { return '\'' + std::string(text) + '\''; }

std::string pageNames() {
  std::string names;
  for (const Page& page : pages()) {
    if (!names.empty()) names += ", ";
    names += page.name;
  }
  return names;
}

// Absent unless the whole text is one finite number.
std::optional<double> numberIn(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (!(number - number == 0)) return std::nullopt;
  return number;
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
  const auto setTask = [&](Arguments::Task task) {
    const bool isFirst = result.task == Arguments::Task::ShowWindow;
    result.task = task;
    return isFirst;
  };
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view name = arguments[i];
    constexpr std::string_view withValue[] = {"--page", "--screenshot", "--screenshots", "--scale", "--width"};
    std::string_view value;
    for (const std::string_view option : withValue) {
      if (name != option) continue;
      if (++i == arguments.size() || *arguments[i] == 0) return BadArguments{std::string(name) + " needs a value"};
      value = arguments[i];
    }

    bool isFirstTask = true;
    if (name == "--page") {
      result.page = findPage(value);
      if (!result.page) return BadArguments{"unknown page " + quoted(value) + "; the pages are: " + pageNames()};
    } else if (name == "--screenshot" || name == "--screenshots") {
      isFirstTask = setTask(name == "--screenshot" ? Arguments::Task::OneScreenshot : Arguments::Task::AllScreenshots);
      result.output = value;
    } else if (name == "--scale") {
      const std::optional<double> scale = numberIn(value);
      if (!scale || *scale < smallestScale || *scale > largestScale)
        return BadArguments{"--scale takes a number from 0.5 to 4, not " + quoted(value)};
      result.scale = *scale;
    } else if (name == "--width") {
      const std::optional<double> width = numberIn(value);
      if (!width || *width < smallestWidth || *width > largestWidth)
        return BadArguments{"--width takes a number from 300 to 8000, not " + quoted(value)};
      result.width = static_cast<int>(*width);
    } else if (name == "--list-pages") {
      isFirstTask = setTask(Arguments::Task::ListPages);
    } else if (name == "--help") {
      isFirstTask = setTask(Arguments::Task::ShowHelp);
    } else if (name == "--light" || name == "--dark") {
      result.theme = name == "--light" ? Theme::Light : Theme::Dark;
    } else if (name == "--log-actions") {
      result.logsActions = true;
    } else {
      return BadArguments{"unknown option " + quoted(name) + "; --help lists the options"};
    }
    if (!isFirstTask)
      return BadArguments{std::string(name) + " cannot be combined with another option after which the program exits"};
  }
  if (result.task == Arguments::Task::AllScreenshots && result.page)
    return BadArguments{"--screenshots takes all pages; --page goes with --screenshot"};
  return result;
}

}  // namespace gallery
