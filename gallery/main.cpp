// tessaluna-gallery: a small music player's window in which every class of the library is alive.
#include <QApplication>
#include <QDir>
#include <cstdio>
#include <optional>

#include "backends/qt/QtBackend.h"
#include "gallery/GalleryWindow.h"
#include "platform/windows/NSApplication.h"

namespace {

constexpr const char* usage =
    "usage: tessaluna-gallery [--page NAME] [--list-pages] [--screenshot FILE.png] [--screenshots DIR]\n"
    "                         [--scale S] [--log-actions]\n";

struct Options {
  const gallery::Page* page = nullptr;
  std::optional<QString> screenshot, screenshots;
  std::optional<double> scale;
  bool listsPages = false, logsActions = false;
};

int fail(const QString& what) {
  std::fprintf(stderr, "tessaluna-gallery: %s\n", qPrintable(what));
  return 2;
}

// What is wrong with the arguments, or absent.
std::optional<QString> read(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const QString name = QString::fromLocal8Bit(argv[i]);
    if (name == "--list-pages") {
      options.listsPages = true;
      continue;
    }
    if (name == "--log-actions") {
      options.logsActions = true;
      continue;
    }
    const bool isKnown =
        name == "--page" || name == "--screenshot" || name == "--screenshots" || name == "--scale";
    if (!isKnown) return "there is no option '" + name + "'";
    if (++i == argc) return name + " needs a value";
    const QString value = QString::fromLocal8Bit(argv[i]);
    if (name == "--page") {
      options.page = gallery::findPage(value.toStdString());
      if (!options.page) return "there is no page '" + value + "'; --list-pages tells which there are";
    } else if (name == "--scale") {
      bool isNumber = false;
      options.scale = value.toDouble(&isNumber);
      if (!isNumber || !(*options.scale >= 0.5 && *options.scale <= 4))
        return "--scale takes a number from 0.5 to 4";
    } else {
      (name == "--screenshot" ? options.screenshot : options.screenshots) = value;
    }
  }
  if (options.screenshot && options.screenshots)
    return QString("--screenshot and --screenshots do not go together");
  return std::nullopt;
}

QString fileNameOf(const gallery::Page& page) {
  return QString::fromUtf8(page.name.data(), static_cast<qsizetype>(page.name.size()))
             .toLower()
             .replace(' ', '-') +
         ".png";
}

int takeScreenshots(gallery::GalleryWindow& window, const Options& options) {
  if (options.screenshot)
    return window.saveScreenshot(*options.screenshot) ? 0
                                                      : fail("cannot write '" + *options.screenshot + "'");
  const QDir folder(*options.screenshots);
  if (!folder.mkpath(".")) return fail("cannot make the folder '" + folder.path() + "'");
  for (const gallery::Page& page : gallery::pages()) {
    if (options.page && options.page != &page) continue;
    window.showPage(page);
    const QString file = folder.filePath(fileNameOf(page));
    if (!window.saveScreenshot(file)) return fail("cannot write '" + file + "'");
    std::printf("%s\n", qPrintable(file));
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (qstrcmp(argv[i], "--help") != 0) continue;
    std::fputs(usage, stdout);
    return 0;
  }
  Options options;
  if (const std::optional<QString> wrong = read(argc, argv, options)) return fail(*wrong);
  if (options.listsPages) {
    for (const gallery::Page& page : gallery::pages()) std::printf("%s\n", std::string(page.name).c_str());
    return 0;
  }
  if (options.scale) qputenv("QT_SCALE_FACTOR", QByteArray::number(*options.scale));

  QApplication qt(argc, argv);
  backend::qt::QtBackend desktop;
  const auto application = platform::NSApplication::sharedApplication();
  gallery::GalleryWindow window(options.logsActions ? gallery::ActionLog::StandardOutput
                                                    : gallery::ActionLog::Off);
  window.showPage(options.page ? *options.page : gallery::pages().front());
  window.show();
  if (options.screenshot || options.screenshots) return takeScreenshots(window, options);
  return QApplication::exec();
}
