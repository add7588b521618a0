#include "tessaluna/backends/qt/decodeImage.h"

#include <QBuffer>
#include <QByteArray>
#include <QColorSpace>
#include <QImageReader>
#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <optional>

#include "tessaluna/platform/backend/imageHeader.h"

namespace tessaluna::backend::qt {

namespace {

// So are files that name no space, and those whose writers say no more than that the gamma is 2.2.
bool isSrgb(const QColorSpace& space) {
  const bool hasItsGamma =
      space.transferFunction() == QColorSpace::TransferFunction::SRgb || std::abs(space.gamma() - 2.2f) < 0.05f;
  return !space.isValid() || (space.primaries() == QColorSpace::Primaries::SRgb && hasItsGamma);
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
  // Qt fills up what a cut-off file lacks.
  if (const std::optional<ImageHeader> header = imageHeader(bytes); header && !header->isWhole) return nullptr;
  QBuffer buffer(&data);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setAutoTransform(true);  // a camera's note of how it was held
  const QSize claimed = reader.size();
  if (!claimed.isValid() || std::int64_t{claimed.width()} * claimed.height() > maxImagePixels) return nullptr;
  // Qt's own limit, in megabytes, must not be lower than ours: four bytes a pixel, and one picture more while converting.
  QImageReader::setAllocationLimit(static_cast<int>(maxImagePixels * 8 >> 20));
  QImage image;
  if (!reader.read(&image)) return nullptr;
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  if (!isSrgb(image.colorSpace())) image.convertToColorSpace(QColorSpace::SRgb);
  if (image.isNull()) return nullptr;
  try {
    return pixelsOf(image);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace tessaluna::backend::qt
