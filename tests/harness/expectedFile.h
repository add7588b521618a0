// The expected texts in files beside the tests, one line per operation or element, so that a review shows a changed picture as
// changed lines. tests/write-expected writes the files again.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "tests/harness/sourceFolder.h"

namespace harness {

// Where two texts part, short enough to be read: the line, the heading "# ..." above it, what either text has there, and how
// many lines differ. Empty for equal texts.
inline std::string differenceOf(const std::vector<std::string>& expected, const std::vector<std::string>& lines) {
  const std::size_t both = std::min(expected.size(), lines.size());
  std::size_t first = both, count = 0;
  for (std::size_t i = both; i-- > 0;) {
    if (lines[i] == expected[i]) continue;
    first = i;
    ++count;
  }
  if (first == lines.size() && first == expected.size()) return "";

  static const std::string nothing;
  const std::string& before = first < expected.size() ? expected[first] : nothing;
  const std::string& after = first < lines.size() ? lines[first] : nothing;
  const auto place =
      std::size_t(std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first - before.begin());
  constexpr std::size_t shownBefore = 40, shown = 160;
  const std::size_t start = place > shownBefore ? place - shownBefore : 0;
  const auto excerpt = [&](const std::string& line) {
    if (line.empty()) return std::string("(nothing)");
    if (start >= line.size()) return std::string("... (ends earlier)");
    return (start > 0 ? "..." : "") + line.substr(start, shown) + (start + shown < line.size() ? "..." : "");
  };

  std::string text = "line " + std::to_string(first + 1) + ", character " + std::to_string(place + 1);
  for (std::size_t i = std::min(first, both); i-- > 0;) {
    if (!expected[i].starts_with("# ")) continue;
    text += ", below \"" + expected[i] + "\"";
    break;
  }
  text += "\n  expected  " + excerpt(before) + "\n  now       " + excerpt(after) + "\n";
  if (lines.size() != expected.size())
    return text + "There are " + std::to_string(lines.size()) + " lines in place of " + std::to_string(expected.size());
  return text + std::to_string(count) + " of " + std::to_string(lines.size()) + " lines differ";
}

// Compares with the file tests/<path>, and reports where they part. Under tests/write-expected it writes the file.
inline void expectSameAsFile(const std::string& path, const std::vector<std::string>& lines) {
  if (const char* folder = std::getenv("TESSALUNA_WRITE_EXPECTED")) {
    std::ofstream file(std::string(folder) + "/" + path);
    for (const std::string& line : lines) file << line << "\n";
    file.close();
    ASSERT_TRUE(file) << "could not write " << path;
    return;
  }
  std::ifstream file(sourceFolder() + "/tests/" + path);
  ASSERT_TRUE(file) << "no file " << path;
  std::vector<std::string> expected;
  for (std::string line; std::getline(file, line);) expected.push_back(line);
  const std::string difference = differenceOf(expected, lines);
  if (!difference.empty()) ADD_FAILURE() << "tests/" << path << ", " << difference;
}

}  // namespace harness
