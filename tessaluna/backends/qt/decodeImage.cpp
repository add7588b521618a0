#include "tessaluna/backends/qt/decodeImage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>
#include <QtEndian>
#include <algorithm>
#include <limits>
#include <new>
#include <optional>

namespace tessaluna::backend::qt {

namespace {

// Where the first scan of a JPEG file begins; absent for what is none or ends before. Segments stand before it, one behind
// the other, each with its length; a camera's small picture is inside of one.
std::optional<qsizetype> startOfScan(QByteArrayView bytes) {
  const auto byte = [&](qsizetype place) { return static_cast<unsigned char>(bytes[place]); };
  qsizetype place = 2;
  while (place + 4 <= bytes.size() && byte(place) == 0xFF) {
    if (byte(place + 1) == 0xFF) {  // stuffing
      ++place;
      continue;
    }
    if (byte(place + 1) == 0xDA) return place;
    place += 2 + (byte(place + 2) << 8 | byte(place + 3));
  }
  return std::nullopt;
}

// Qt fills up what a cut-off file lacks. A whole one has its end mark, at most followed by some stuffing, or the length that
// it tells of itself.
bool lacksItsEnd(QByteArrayView bytes) {
  if (bytes.startsWith("\xFF\xD8\xFF")) {
    const std::optional<qsizetype> scan = startOfScan(bytes);
    return !scan || bytes.sliced(*scan).lastIndexOf(QByteArrayView("\xFF\xD9")) < 0;
  }
  if (bytes.startsWith("BM") && bytes.size() >= 6) return qFromLittleEndian<quint32>(bytes.data() + 2) > bytes.size();
  return bytes.startsWith("\x89PNG") && bytes.lastIndexOf(QByteArrayView("IEND\xAE\x42\x60\x82")) < 0;
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
  const auto isOpaque = [](std::uint32_t pixel) { return pixel >> 24 == 255; };
  pixels->isOpaque = std::all_of(pixels->argb.begin(), pixels->argb.end(), isOpaque);
  return pixels;
}

}  // namespace

std::shared_ptr<const ImagePixels> decodeImage(std::span<const std::byte> bytes) {
  if (bytes.empty() || bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return nullptr;
  auto data = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
  if (lacksItsEnd(data)) return nullptr;
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

}  // namespace tessaluna::backend::qt
