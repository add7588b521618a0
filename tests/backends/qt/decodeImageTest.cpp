#include "tessaluna/backends/qt/decodeImage.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QBuffer>
#include <QColorSpace>
#include <QImage>

#include "tessaluna/platform/backend/imageHeader.h"

namespace tessaluna::backend::qt {

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

// What the file's only color, which it says is of that space, becomes.
QColor decoded(const char* format, QColor color, const QColorSpace& space) {
  QImage image(8, 8, QImage::Format_RGB32);
  image.fill(color);
  image.setColorSpace(space);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format, 100);
  const auto pixels = decode(bytes);
  return pixels ? QColor::fromRgba(pixels->argb[0]) : QColor(Qt::transparent);
}

// Of a PNG chunk's name and content.
quint32 crcOf(const QByteArray& bytes) {
  quint32 sum = ~0u;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int i = 0; i < 8; ++i) sum = sum & 1 ? sum >> 1 ^ 0xEDB88320u : sum >> 1;
  }
  return ~sum;
}

// The same PNG file with another width and height, eight hexadecimal digits each, and a checksum that fits.
QByteArray claiming(QByteArray png, const char* size) {
  png.replace(16, 8, QByteArray::fromHex(size));
  const quint32 sum = crcOf(png.mid(12, 17));
  for (int i = 0; i < 4; ++i) png[29 + i] = char(sum >> (24 - 8 * i));
  return png;
}

// Of the process, in kibibytes.
long peakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace

TEST(decodeImage, PixelsArePremultipliedFromTheTop) {
  const auto pixels = decode(encoded("PNG"));
  ASSERT_TRUE(pixels);
  EXPECT_EQ(pixels->width, 3);
  EXPECT_EQ(pixels->height, 2);
  const std::vector<std::uint32_t> expected{0x80800000, 0x80800000, 0xFF0000FF, 0x80800000, 0x80800000, 0x80800000};
  EXPECT_EQ(pixels->argb, expected);
  EXPECT_FALSE(pixels->isOpaque);
}

TEST(decodeImage, ReadsJpeg) {
  const auto pixels = decode(encoded("JPG", {16, 8}));
  ASSERT_TRUE(pixels);
  EXPECT_EQ(pixels->argb.size(), 128u);
  EXPECT_TRUE(pixels->isOpaque);
}

TEST(decodeImage, ColorsOfAnotherSpaceBecomeSrgb) {
  for (const char* format : {"PNG", "JPG"}) {
    const QColor red = decoded(format, {219, 0, 0}, QColorSpace::AdobeRgb);
    EXPECT_NEAR(red.red(), 255, 3) << format;
    EXPECT_NEAR(red.green(), 0, 3) << format;
    EXPECT_NEAR(red.blue(), 0, 3) << format;
    EXPECT_NEAR(decoded(format, {234, 51, 35}, QColorSpace::DisplayP3).red(), 255, 3) << format;
    EXPECT_NEAR(decoded(format, {128, 128, 128}, QColorSpace::SRgbLinear).red(), 188, 2) << format;
  }
}

TEST(decodeImage, ColorsInSrgbStayAsTheyAre) {
  const QColorSpace gammaOnly(QColorSpace::Primaries::SRgb, 1 / 0.45455f);
  for (const QColorSpace& space : {QColorSpace(), QColorSpace(QColorSpace::SRgb), gammaOnly})
    EXPECT_EQ(decoded("PNG", {12, 100, 201}, space), QColor(12, 100, 201));
}

TEST(decodeImage, NoPictureIsAbsent) {
  EXPECT_FALSE(decode({}));
  EXPECT_FALSE(decode("no picture at all"));
}

TEST(decodeImage, CutOffPictureIsAbsentWhereverItIsCut) {
  for (const char* format : {"PNG", "JPG", "BMP"}) {
    const QByteArray whole = encoded(format, {24, 16});
    ASSERT_TRUE(decode(whole)) << format;
    for (qsizetype length = 0; length < whole.size(); ++length)
      ASSERT_FALSE(decode(whole.left(length))) << format << " cut to " << length << " of " << whole.size() << " bytes";
  }
}

// Cameras put a small picture, a whole file of its own, into the head of the large one.
TEST(decodeImage, EndOfAPictureWithinAPictureIsNotItsOwn) {
  const QByteArray small = encoded("JPG", {8, 8}), large = encoded("JPG", {64, 48});
  const qsizetype length = small.size() + 8;
  QByteArray head("\xFF\xE1");
  head += char(length >> 8);
  head += char(length & 255);
  head += "inside" + small;
  const QByteArray whole = large.left(2) + head + large.mid(2);
  const auto pixels = decode(whole);
  ASSERT_TRUE(pixels);
  EXPECT_EQ(pixels->width, 64);
  EXPECT_FALSE(decode(whole.left(whole.size() - 20)));
  EXPECT_TRUE(decode(whole + QByteArray(100, 0))) << "stuffing behind the end harms nobody";
}

TEST(decodeImage, GiganticClaimIsAbsentAtOnceAndTakesNoMemory) {
  const long before = peakMemory();
  const QByteArray bytes = encoded("PNG");
  ASSERT_TRUE(decode(claiming(bytes, "0000000300000002")));  // its own
  for (const char* size : {"7fffffff7fffffff", "0000ffff0000ffff", "00002000000f0000", "7fffffff00000001"})
    EXPECT_FALSE(decode(claiming(bytes, size))) << size;
  // One that claims 30000 by 30000 pixels in a format without checksums, and one in a JPEG's frame header.
  const QByteArray bitmap = encoded("BMP");
  QByteArray huge = bitmap;
  huge.replace(18, 8, QByteArray::fromHex("3075000030750000"));
  ASSERT_TRUE(decode(bitmap));
  EXPECT_FALSE(decode(huge));
  QByteArray photo = encoded("JPG");
  const qsizetype frame = photo.indexOf("\xFF\xC0");
  ASSERT_GT(frame, 0);
  photo.replace(frame + 5, 4, QByteArray::fromHex("fffffff0"));
  EXPECT_FALSE(decode(photo));
  EXPECT_LT(peakMemory() - before, 16 << 10);
}

TEST(decodeImage, ClaimThatTheBytesDoNotFillIsAbsent) {
  // As many pixels as are allowed, of which there is nothing.
  EXPECT_FALSE(decode(claiming(encoded("PNG"), "0000200000002000")));
}

// A JPEG file with a camera's note of how it was held.
QByteArray held(QByteArray jpeg, char orientation) {
  QByteArray note = QByteArray::fromHex(
      "457869660000"
      "49492A0008000000"
      "0100"
      "1201030001000000");
  note += orientation;
  note += QByteArray(7, 0);
  return jpeg.left(2) + QByteArray::fromHex("FFE100") + char(note.size() + 2) + note + jpeg.mid(2);
}

TEST(decodeImage, AHeaderTellsWhatIsDecoded) {
  std::vector<QByteArray> files;
  for (const char* format : {"PNG", "JPG", "BMP", "PPM"}) files.push_back(encoded(format, {24, 16}));
  for (char orientation = 1; orientation <= 8; ++orientation) files.push_back(held(encoded("JPG", {24, 16}), orientation));
  int turned = 0;
  for (const QByteArray& file : files) {
    const auto header = imageHeader(std::as_bytes(std::span(file.constData(), static_cast<std::size_t>(file.size()))));
    const auto pixels = decode(file);
    ASSERT_TRUE(header && pixels) << file.left(4).toStdString();
    EXPECT_EQ(header->width, pixels->width);
    EXPECT_EQ(header->height, pixels->height);
    EXPECT_TRUE(header->isWhole);
    if (pixels->width == 16) ++turned;
  }
  EXPECT_EQ(turned, 4);
}

}  // namespace tessaluna::backend::qt
