// Album covers as files, drawn by the gallery itself: what a player would read from disk or from the network.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace gallery {

using FileBytes = std::vector<std::byte>;

struct CoverFile {
  const char* name;  // one word
  const char* note;
  FileBytes (*make)();  // slow for many pixels; any thread may call it
  bool hasManyPixels = false;
};

// Wide, tall, square, tiny, 6,000 pixels each way, cut off, and absent, whose bytes are empty.
std::span<const CoverFile> coverFiles();

}  // namespace gallery
