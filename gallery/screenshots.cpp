#include "gallery/screenshots.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QPixmap>
#include <QSaveFile>

#include "gallery/GalleryWindow.h"

namespace gallery {

namespace {

// Layouts and first displays take a few turns of the event loop, each asking for the next.
void settle() {
  constexpr int turns = 5;
  for (int i = 0; i < turns; ++i) QCoreApplication::processEvents();
}

QString fileNameOf(const Page& page) {
  const QString name = QString::fromUtf8(page.name.data(), static_cast<qsizetype>(page.name.size()));
  return name.toLower().replace(' ', '-') + ".png";
}

}  // namespace

std::optional<std::string> writeScreenshot(GalleryWindow& window, const Page& page, const std::string& file) {
  window.showPage(page);
  window.show();
  settle();
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  if (!window.grab().save(&buffer, "PNG")) return "the picture does not fit into memory";
  QSaveFile out(QString::fromStdString(file));
  const bool isWritten = out.open(QIODevice::WriteOnly) && out.write(png) == png.size() && out.commit();
  if (isWritten) return std::nullopt;
  return "'" + file + "' cannot be written: " + out.errorString().toStdString();
}

std::optional<std::string> writeScreenshots(GalleryWindow& window, const std::string& folder) {
  const QDir directory(QString::fromStdString(folder));
  if (!directory.mkpath(".")) return "the folder '" + folder + "' cannot be made";
  for (const Page& page : pages()) {
    const std::string file = directory.filePath(fileNameOf(page)).toStdString();
    if (std::optional<std::string> failure = writeScreenshot(window, page, file)) return failure;
  }
  return std::nullopt;
}

}  // namespace gallery
