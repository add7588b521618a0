#include "tessaluna/platform/backend/imageHeader.h"

#include <gtest/gtest.h>

#include <string>

namespace tessaluna::backend {
namespace {

std::optional<ImageHeader> headerOf(const std::string& bytes) { return imageHeader(std::as_bytes(std::span(bytes))); }

template <std::size_t N>
std::string bytesOf(const char (&text)[N]) {
  return {text, N - 1};
}

const std::string png = bytesOf("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x17\x70\0\0\x02\x58\x08\x02\0\0\0....");
const std::string pngEnd = bytesOf("\0\0\0\0IEND\xAE\x42\x60\x82");
const std::string jpegFrame = bytesOf("\xFF\xC2\0\x11\x08\0\x30\0\x40\x03.........");
const std::string jpegScan = bytesOf("\xFF\xDA\0\x02....\xFF\xD9");

// A camera's note with one entry, the orientation.
std::string jpegNote(char orientation, bool isLittle) {
  const std::string note =
      isLittle ? bytesOf("Exif\0\0II\x2A\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0") + orientation + bytesOf("\0\0\0")
               : bytesOf("Exif\0\0MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0") + orientation + bytesOf("\0\0");
  return bytesOf("\xFF\xE1\0") + static_cast<char>(note.size() + 2) + note;
}

TEST(imageHeader, ReportsTheSizeOfEachFormat) {
  const struct {
    const char* name;
    std::string bytes;
    std::int64_t width, height;
  } cases[] = {
      {"PNG", png + pngEnd, 6000, 600},
      {"JPEG", bytesOf("\xFF\xD8\xFF\xE0\0\x04..") + jpegFrame + jpegScan, 64, 48},
      {"JPEG with stuffing", bytesOf("\xFF\xD8\xFF\xFF\xFF\xE0\0\x04..") + jpegFrame + jpegScan, 64, 48},
      {"BMP", bytesOf("BM\x1A\0\0\0\0\0\0\0\0\0\0\0\x28\0\0\0\x03\0\0\0\x02\0\0\0"), 3, 2},
      {"BMP from the top", bytesOf("BM\x1A\0\0\0\0\0\0\0\0\0\0\0\x28\0\0\0\x03\0\0\0\xFE\xFF\xFF\xFF"), 3, 2},
      {"old BMP", bytesOf("BM\x16\0\0\0\0\0\0\0\0\0\0\0\x0C\0\0\0\x03\0\x02\0"), 3, 2},
      {"GIF", bytesOf("GIF89a\x03\0\x02\x01"), 3, 258},
      {"P6", bytesOf("P6 2 1 255\n") + std::string(6, 'x'), 2, 1},
      {"P7", bytesOf("P7\nWIDTH 1\nHEIGHT 2\nDEPTH 4\nMAXVAL 255\nENDHDR\n") + std::string(8, 'x'), 1, 2},
  };
  for (const auto& each : cases) {
    const auto header = headerOf(each.bytes);
    ASSERT_TRUE(header) << each.name;
    EXPECT_EQ(header->width, each.width) << each.name;
    EXPECT_EQ(header->height, each.height) << each.name;
    EXPECT_TRUE(header->isWhole) << each.name;
  }
}

TEST(imageHeader, ACamerasNoteTurnsTheSize) {
  for (const bool isLittle : {false, true})
    for (char orientation = 1; orientation <= 9; ++orientation) {
      const auto header = headerOf(bytesOf("\xFF\xD8") + jpegNote(orientation, isLittle) + jpegFrame + jpegScan);
      ASSERT_TRUE(header);
      const bool isTurned = orientation >= 5 && orientation <= 8;
      EXPECT_EQ(header->width, isTurned ? 48 : 64) << int(orientation) << isLittle;
      EXPECT_EQ(header->height, isTurned ? 64 : 48) << int(orientation) << isLittle;
    }
}

TEST(imageHeader, AMissingEndShows) {
  for (const std::string& whole :
       {png + pngEnd, bytesOf("\xFF\xD8") + jpegFrame + jpegScan, bytesOf("P6 2 1 255\n") + "xxxxxx",
        bytesOf("BM\x1A\0\0\0\0\0\0\0\0\0\0\0\x28\0\0\0\x03\0\0\0\x02\0\0\0")})
    for (std::size_t length = 0; length < whole.size(); ++length) {
      const auto header = headerOf(whole.substr(0, length));
      EXPECT_TRUE(!header || !header->isWhole) << whole.substr(0, 4) << " cut to " << length;
    }
}

TEST(imageHeader, OtherBytesHaveNone) {
  const std::string endlessNote = bytesOf("\xFF\xD8\xFF\xE1\0\x10") + bytesOf("Exif\0\0II\x2A\0\xFF\xFF\xFF\xFF");
  for (const std::string& bytes :
       {std::string(), std::string("no picture"), bytesOf("\x89PNG\r\n\x1A\n"), bytesOf("GIF89a\0\0\0\0"),
        bytesOf("\xFF\xD8\xFF"), bytesOf("P6 0 1 255\n"), bytesOf("P6 999999999999 1 255\n"), bytesOf("BM"),
        bytesOf("P7\nWIDTH 1\nHEIGHT 2\nMAXVAL 9\nENDHDR\n"), endlessNote})
    EXPECT_FALSE(headerOf(bytes)) << bytes;
}

}  // namespace
}  // namespace tessaluna::backend
