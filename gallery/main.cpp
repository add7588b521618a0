#include <QApplication>
#include <cstdio>
#include <optional>
#include <vector>

#include "gallery/Arguments.h"
#include "gallery/GalleryWindow.h"
#include "gallery/Opening.h"
#include "gallery/look.h"
#include "gallery/screenshots.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/windows/NSApplication.h"

namespace {

using gallery::Arguments;

int complain(const std::string& complaint) {
  std::fprintf(stderr, "tessaluna-gallery: %s\n", complaint.c_str());
  return 1;
}

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void listPages() {
  for (const gallery::Page& page : gallery::pages()) {
    print(page.name);
    print("\n");
  }
}

#ifdef Q_OS_LINUX
bool hasDisplay() {
  return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
         qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}
#else
bool hasDisplay() { return true; }
#endif

int run(const Arguments& arguments, int argc, char** argv) {
  const bool needsDisplay = arguments.task == Arguments::Task::ShowWindow;
  if (!hasDisplay()) {
    if (needsDisplay) return complain("there is no display; --screenshots DIR writes pictures of the pages instead");
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  // Qt reads this when the application is made.
  if (arguments.scale != 1) qputenv("QT_SCALE_FACTOR", QByteArray::number(arguments.scale));

  QApplication application(argc, argv);
  QApplication::setApplicationName("tessaluna-gallery");
  tessaluna::platform::setNeutralsFollowPalette(true);
  const gallery::Look look(application, arguments.theme);
  const tessaluna::backend::qt::QtBackend desktop;
  const auto nsApplication = tessaluna::platform::NSApplication::sharedApplication();
  gallery::GalleryWindow window(arguments.logsActions ? gallery::ActionLog::StandardOutput : gallery::ActionLog::Off);
  if (arguments.width > 0) window.resize(arguments.width, window.height());
  const gallery::Page& page = arguments.page ? *arguments.page : gallery::pages().front();

  switch (arguments.task) {
    case Arguments::Task::OneScreenshot:
      if (const auto failure = gallery::writeScreenshot(window, page, arguments.output)) return complain(*failure);
      return 0;
    case Arguments::Task::AllScreenshots:
      if (const auto failure = gallery::writeScreenshots(window, arguments.output)) return complain(*failure);
      return 0;
    case Arguments::Task::ShowWindow:
    case Arguments::Task::ListPages:
    case Arguments::Task::ShowHelp: break;
  }
  std::optional<gallery::Opening> opening;
  if (arguments.page) {
    window.showPage(page);
    window.show();
  } else {
    opening.emplace(window, page);
  }
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const std::span given(argv + 1, argv + argc);
  const std::vector<const char*> arguments(given.begin(), given.end());
  const auto parsed = gallery::parseArguments(arguments);
  if (const auto* bad = std::get_if<gallery::BadArguments>(&parsed)) return complain(bad->complaint);
  const Arguments& wanted = std::get<Arguments>(parsed);
  if (wanted.task == Arguments::Task::ListPages) {
    listPages();
    return 0;
  }
  if (wanted.task == Arguments::Task::ShowHelp) {
    print(gallery::helpText());
    return 0;
  }
  // Qt gets no arguments: it has options of its own, which the gallery does not accept.
  return run(wanted, 1, argv);
}
