// The expected texts in files beside the tests, one line per operation or element, so that a review shows a changed picture as
// changed lines. tests/write-expected writes the files again.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "tests/harness/sourceFolder.h"

namespace harness {

// Compares with the file tests/<path>, and reports the first line that differs. Under tests/write-expected it writes the file.
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
  for (std::size_t i = 0; i < std::min(lines.size(), expected.size()); ++i)
    ASSERT_EQ(lines[i], expected[i]) << path << ":" << i + 1;
  EXPECT_EQ(lines.size(), expected.size()) << path;
}

}  // namespace harness
