#include "backends/qt/decodeImage.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

namespace backend::qt {

namespace {

QByteArray encoded(const char* format, QSize size = {3, 2}) {
  QImage image(size, QImage::Format_ARGB32);
  image.fill(QColor(255, 0, 0, 128));
  if (!image.isNull()) image.setPixelColor(size.width() - 1, 0, QColor(0, 0, 255));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

std::shared_ptr<const ImagePixels> decode(const QByteArray& bytes) {
  return decodeImage(std::as_bytes(std::span(bytes.constData(), static_cast<std::size_t>(bytes.size()))));
}

}  // namespace

TEST(decodeImage, PixelsArePremultipliedFromTheTop) {
  const auto pixels = decode(encoded("PNG"));
  ASSERT_TRUE(pixels);
  EXPECT_EQ(pixels->width, 3);
  EXPECT_EQ(pixels->height, 2);
  const std::vector<std::uint32_t> expected{0x80800000, 0x80800000, 0xFF0000FF, 0x80800000, 0x80800000, 0x80800000};
  EXPECT_EQ(pixels->argb, expected);
}

TEST(decodeImage, ReadsJpeg) {
  const auto pixels = decode(encoded("JPG", {16, 8}));
  ASSERT_TRUE(pixels);
  EXPECT_EQ(pixels->argb.size(), 128u);
}

TEST(decodeImage, NoPictureIsAbsent) {
  EXPECT_FALSE(decode({}));
  EXPECT_FALSE(decode("no picture at all"));
}

TEST(decodeImage, CutOffPictureIsAbsent) {
  for (const char* format : {"PNG", "JPG"}) {
    const QByteArray whole = encoded(format, {64, 64});
    ASSERT_TRUE(decode(whole));
    for (const int part : {2, 3, 10}) EXPECT_FALSE(decode(whole.left(whole.size() * (part - 1) / part))) << format;
  }
}

TEST(decodeImage, GiganticClaimIsAbsent) {
  QByteArray bytes = encoded("PNG");
  // Width and height stand after the signature and the header chunk's length and name; the checksum is then wrong, so
  // that what refuses it first does not matter: nothing may be allocated.
  bytes.replace(16, 8, QByteArray::fromHex("7fffffff7fffffff"));
  EXPECT_FALSE(decode(bytes));
  // A format without checksums that claims 30000 by 30000 pixels.
  const QByteArray bitmap = encoded("BMP");
  QByteArray huge = bitmap;
  huge.replace(18, 8, QByteArray::fromHex("3075000030750000"));
  ASSERT_TRUE(decode(bitmap));
  EXPECT_FALSE(decode(huge));
}

}  // namespace backend::qt
