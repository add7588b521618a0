#include "tessaluna/platform/backend/imageHeader.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tessaluna::backend {

namespace {

constexpr bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

// The next word of the text, taken off its front with the one blank after it; comments are lines that begin with "#".
std::string_view takeWord(std::string_view& text) {
  while (!text.empty() && (isBlank(text.front()) || text.front() == '#')) {
    const bool isComment = text.front() == '#';
    text.remove_prefix(isComment ? std::min(text.find('\n'), text.size()) : 1);
  }
  std::size_t length = 0;
  while (length < text.size() && !isBlank(text[length])) ++length;
  const std::string_view word = text.substr(0, length);
  text.remove_prefix(std::min(length + 1, text.size()));
  return word;
}

// A size has at most nine digits: what is longer is not a picture that anybody decodes. Absent for anything else.
std::optional<std::int64_t> takeNumber(std::string_view& text) {
  const std::string_view word = takeWord(text);
  if (word.empty() || word.size() > 9) return std::nullopt;
  std::int64_t number = 0;
  for (const char c : word) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return number;
}

// Numbers in a file, first byte first; beyond the end zeros.
class FileBytes {
 public:
  explicit FileBytes(std::string_view text) : text_(text) {}

  std::size_t size() const { return text_.size(); }
  std::uint32_t byte(std::size_t place) const { return place < text_.size() ? static_cast<unsigned char>(text_[place]) : 0; }
  std::uint32_t big16(std::size_t place) const { return byte(place) << 8 | byte(place + 1); }
  std::uint32_t big32(std::size_t place) const { return big16(place) << 16 | big16(place + 2); }
  std::uint32_t little16(std::size_t place) const { return byte(place) | byte(place + 1) << 8; }
  std::uint32_t little32(std::size_t place) const { return little16(place) | little16(place + 2) << 16; }
  std::string_view text(std::size_t place) const { return text_.substr(std::min(place, text_.size())); }

 private:
  std::string_view text_;
};

std::optional<ImageHeader> pngHeader(const FileBytes& file) {
  constexpr std::size_t sizes = 16;
  if (file.size() < sizes + 8 || !file.text(12).starts_with("IHDR")) return std::nullopt;
  return ImageHeader{.width = file.big32(sizes),
                     .height = file.big32(sizes + 4),
                     .isWhole = file.text(0).rfind(std::string_view("IEND\xAE\x42\x60\x82")) != std::string_view::npos};
}

// Whether a camera's note turns the picture by a quarter. The note is a small TIFF file, whose first directory may have an
// orientation: 5 to 8 exchange width and height.
bool isTurnedByQuarter(const FileBytes& note) {
  constexpr std::uint32_t orientationTag = 0x0112;
  constexpr std::size_t start = 6;  // after "Exif" and two zeros
  const bool isLittle = note.text(start).starts_with("II");
  const auto number16 = [&](std::size_t place) { return isLittle ? note.little16(place) : note.big16(place); };
  const auto number32 = [&](std::size_t place) { return isLittle ? note.little32(place) : note.big32(place); };
  const std::size_t directory = start + number32(start + 4);
  const std::uint32_t entries = number16(directory);
  for (std::uint32_t i = 0; i < entries; ++i) {
    const std::size_t entry = directory + 2 + std::size_t{12} * i;
    if (entry >= note.size()) return false;
    if (number16(entry) == orientationTag) return number16(entry + 8) >= 5 && number16(entry + 8) <= 8;
  }
  return false;
}

// Segments follow one another, each with its length; the frame's has the size, and the scan follows them. A camera's
// small picture, a whole file of its own, is inside of one.
std::optional<ImageHeader> jpegHeader(const FileBytes& file) {
  std::optional<ImageHeader> header;
  bool isTurned = false, hasNote = false;
  std::size_t place = 2;
  while (place + 4 <= file.size() && file.byte(place) == 0xFF) {
    const std::uint32_t marker = file.byte(place + 1);
    if (marker == 0xFF) {  // stuffing
      ++place;
      continue;
    }
    if (marker == 0xDA) {
      if (!header) return std::nullopt;
      if (isTurned) std::swap(header->width, header->height);
      header->isWhole = file.text(place).rfind("\xFF\xD9") != std::string_view::npos;
      return header;
    }
    const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (isFrame && !header) header = ImageHeader{.width = file.big16(place + 7), .height = file.big16(place + 5)};
    const std::string_view content = file.text(place + 4);
    if (marker == 0xE1 && !std::exchange(hasNote, true) && content.starts_with(std::string_view("Exif\0\0", 6)))
      isTurned = isTurnedByQuarter(FileBytes(content));
    place += 2 + file.big16(place + 2);
  }
  if (header) header->isWhole = false;
  return header;
}

std::optional<ImageHeader> bmpHeader(const FileBytes& file) {
  constexpr std::uint32_t sizeOfOldHeader = 12;
  const bool isOld = file.little32(14) == sizeOfOldHeader;
  if (file.size() < (isOld ? 22u : 26u)) return std::nullopt;
  const auto width = static_cast<std::int32_t>(isOld ? file.little16(18) : file.little32(18));
  const auto height = static_cast<std::int32_t>(isOld ? file.little16(20) : file.little32(22));
  // A picture whose rows run from the top has a negative height.
  return ImageHeader{.width = width, .height = std::abs(std::int64_t{height}), .isWhole = file.little32(2) <= file.size()};
}

std::optional<ImageHeader> netpbmHeader(const FileBytes& file) {
  std::string_view text = file.text(0);
  const std::optional<NetpbmHeader> header = takeNetpbmHeader(text);
  if (!header || header->maximum != 255 || header->width <= 0 || header->height <= 0) return std::nullopt;
  // Nine digits each at the most: the products fit.
  const std::int64_t rowLength = header->width * std::max<std::int64_t>(header->depth, 1);
  return ImageHeader{.width = header->width,
                     .height = header->height,
                     .isWhole = static_cast<std::int64_t>(text.size()) / rowLength >= header->height};
}

}  // namespace

std::optional<NetpbmHeader> takeNetpbmHeader(std::string_view& text) {
  const std::string_view magic = takeWord(text);
  NetpbmHeader header;
  if (magic == "P6") {
    for (std::int64_t* field : {&header.width, &header.height, &header.maximum}) {
      const std::optional<std::int64_t> number = takeNumber(text);
      if (!number) return std::nullopt;
      *field = *number;
    }
    return header;
  }
  if (magic != "P7") return std::nullopt;
  for (std::string_view key = takeWord(text); key != "ENDHDR"; key = takeWord(text)) {
    if (key == "TUPLTYPE") {
      takeWord(text);  // said by the depth already
      continue;
    }
    std::int64_t* const field = key == "WIDTH"    ? &header.width
                                : key == "HEIGHT" ? &header.height
                                : key == "MAXVAL" ? &header.maximum
                                : key == "DEPTH"  ? &header.depth
                                                  : nullptr;
    const std::optional<std::int64_t> number = field ? takeNumber(text) : std::nullopt;
    if (!number) return std::nullopt;
    *field = *number;
  }
  return header;
}

std::optional<ImageHeader> imageHeader(std::span<const std::byte> bytes) {
  const FileBytes file({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  const std::string_view text = file.text(0);
  std::optional<ImageHeader> header;
  if (text.starts_with("\x89PNG\r\n\x1A\n")) header = pngHeader(file);
  else if (text.starts_with("\xFF\xD8\xFF")) header = jpegHeader(file);
  else if (text.starts_with("BM")) header = bmpHeader(file);
  else if (text.starts_with("GIF87a") || text.starts_with("GIF89a"))
    header =
        file.size() < 10 ? std::nullopt : std::optional(ImageHeader{.width = file.little16(6), .height = file.little16(8)});
  else if (text.starts_with("P6") || text.starts_with("P7")) header = netpbmHeader(file);
  return header && header->width > 0 && header->height > 0 ? header : std::nullopt;
}

}  // namespace tessaluna::backend
