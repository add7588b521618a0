#include "backends/qt/imageDecoding.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

namespace backend::qt {

std::shared_ptr<const ImagePixels> imageFromBytes(std::span<const std::byte> bytes) {
  QByteArray data = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                            static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&data);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setAutoTransform(true);
  // What a picture claims is known before any of it is decoded.
  const QSize claimed = reader.size();
  const auto isTooLarge = [](QSize size) { return qint64{size.width()} * size.height() > mostImagePixels; };
  if (claimed.isValid() && (claimed.isEmpty() || isTooLarge(claimed))) return nullptr;
  QImage image;
  if (!reader.read(&image) || image.isNull() || isTooLarge(image.size())) return nullptr;
  image.convertTo(QImage::Format_ARGB32_Premultiplied);

  auto pixels = std::make_shared<ImagePixels>();
  pixels->width = image.width();
  pixels->height = image.height();
  pixels->argb.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
    pixels->argb.insert(pixels->argb.end(), row, row + image.width());
  }
  return pixels;
}

}  // namespace backend::qt
