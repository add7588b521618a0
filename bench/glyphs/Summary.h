// Collects the results of the benchmark, and prints them as tables.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "bench/glyphs/peers.h"

namespace bench {

// One measurement of one routine at one size: seconds per drawing.
struct Round {
  double routine = 0, outlines = 0;  // cold
  double again = 0;                  // the compared one of the two, drawn again
  std::array<double, std::size(peers)> ofPeers{};
};

// How often a routine allocates.
struct Allocations {
  std::size_t first = 0;   // in its first drawing on a new canvas
  std::size_t second = 0;  // in its second drawing, when its shapes are remembered
  std::size_t later = 0;   // in each later drawing
  std::size_t itsOwn = 0;  // of these, for colors and path objects: also on a canvas that does nothing
};

// The largest difference of a pixel's opacity from the exact picture of the outlines, of 255.
struct OffBy {
  double ours = 0;
  std::array<double, std::size(peers)> ofPeers{};
};

struct Entry {
  std::string_view routine;
  double scale = 1;
  bool hasRecipe = false;
  OffBy offBy = {};
  Allocations allocations = {};
  std::vector<Round> rounds = {};
};

// Prints nothing while runs report. Their results are in the entries, which are printed at the end.
class Summary final : public benchmark::BenchmarkReporter {
 public:
  explicit Summary(const std::vector<Entry>& entries) : entries_(entries) {}

  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>&) override {}
  void Finalize() override;

 private:
  void printSize(double scale);
  void printRecipes(double scale);
  void printExactness(double scale);
  void printAllocations();

  const std::vector<Entry>& entries_;
};

}  // namespace bench
