// The pixels of a PNG file, for looking at what the tool wrote.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace artwork {

struct PngPicture {
  struct Pixel {
    std::uint8_t red, green, blue, alpha;
    friend bool operator==(const Pixel&, const Pixel&) = default;
  };

  int width = 0, height = 0;
  std::vector<Pixel> pixels;  // from the top

  Pixel at(int x, int y) const { return pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)]; }
  bool isEmpty() const;  // all transparent
  friend bool operator==(const PngPicture&, const PngPicture&) = default;
};

// Absent unless the file is a whole PNG.
std::optional<PngPicture> readPng(const std::filesystem::path& path);

}  // namespace artwork
