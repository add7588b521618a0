#include "backends/qt/decodeImage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>
#include <algorithm>
#include <limits>
#include <new>

namespace backend::qt {

namespace {

// Qt fills up what a cut-off JPEG file lacks. A whole one has its end mark, at most followed by some stuffing.
bool lacksEndOfJpeg(const QByteArray& bytes) {
  const bool isJpeg = bytes.startsWith("\xFF\xD8\xFF");
  return isJpeg && bytes.lastIndexOf(QByteArrayView("\xFF\xD9")) < 0;
}

std::shared_ptr<const ImagePixels> pixelsOf(const QImage& image) {
  auto pixels = std::make_shared<ImagePixels>();
  pixels->width = image.width();
  pixels->height = image.height();
  pixels->argb.resize(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
  auto out = pixels->argb.begin();
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
    out = std::copy(row, row + image.width(), out);
  }
  return pixels;
}

}  // namespace

std::shared_ptr<const ImagePixels> decodeImage(std::span<const std::byte> bytes) {
  if (bytes.empty() || bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return nullptr;
  auto data = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
  if (lacksEndOfJpeg(data)) return nullptr;
  QBuffer buffer(&data);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setAutoTransform(true);  // a camera's note of how it was held
  const QSize claimed = reader.size();
  if (!claimed.isValid() || std::int64_t{claimed.width()} * claimed.height() > mostImagePixels) return nullptr;
  // Qt's own limit, in megabytes, must not be lower than ours: four bytes a pixel, and one picture more while converting.
  QImageReader::setAllocationLimit(static_cast<int>(mostImagePixels * 8 >> 20));
  QImage image;
  if (!reader.read(&image)) return nullptr;
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return nullptr;
  try {
    return pixelsOf(image);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace backend::qt
