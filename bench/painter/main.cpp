// Compares drawing what a player's window needs with what people would use instead. In one round every contestant draws one
// scene, each time beginning with another contestant, so that compared times were measured within milliseconds of each
// other. Pictures are first compared with exact ones.
//
//   bench_painter [--rounds=N] [--filter=TEXT] [--only=NAME --times=N]
//
// With --only, one contestant draws a scene that matches the filter that many times, for a profiler.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/harness/countedAllocations.h"
#include "bench/harness/cpuTime.h"
#include "bench/harness/statistics.h"
#include "bench/painter/Scene.h"

namespace bench {

namespace {

constexpr double secondsOfOne = 0.004;  // per contestant and round
constexpr double allowedMean = 4;       // the largest mean difference at which a picture is the same drawing

struct Options {
  int rounds = 21, times = 0;
  std::string filter, only;
};

// Differences of all channels from the exact picture, of 255.
struct OffBy {
  double mean = 0, worst = 0;
};

OffBy offBy(const Contestant& contestant, const ExactPixels& exact) {
  OffBy off;
  auto pixel = exact.pixels.begin();
  for (int y = 0; y < exact.height; ++y) {
    for (int x = 0; x < exact.width; ++x, ++pixel) {
      const std::uint32_t is = contestant.row(y)[x];
      const double channels[] = {pixel->blue, pixel->green, pixel->red, pixel->alpha};
      for (int i = 0; i < 4; ++i) {
        const double difference = std::abs(double(is >> (8 * i) & 255) - channels[i]);
        off.mean += difference;
        off.worst = std::max(off.worst, difference);
      }
    }
  }
  off.mean /= 4.0 * exact.width * exact.height;
  return off;
}

void printExactness(const Scene& scene) {
  if (!scene.exact) return;
  const ExactPixels exact = scene.exact();
  std::printf("    off by, of 255, in the mean and at most:");
  for (const Entrant& entrant : scene.entrants) {
    const std::unique_ptr<Contestant> contestant = entrant.make();
    contestant->draw();
    const OffBy off = offBy(*contestant, exact);
    std::printf("  %s %.2f %.1f", entrant.name.c_str(), off.mean, off.worst);
    if (off.mean <= allowedMean) continue;
    std::fprintf(stderr, "bench_painter: %s draws something else for %s\n", entrant.name.c_str(), scene.name.c_str());
    std::exit(1);
  }
  std::printf("\n");
}

// The median time of each contestant, and the median ratio of our time to the fastest peer's.
void printTimes(const Scene& scene, int rounds) {
  const std::size_t count = scene.entrants.size();
  std::vector<std::unique_ptr<Contestant>> contestants;
  for (const Entrant& entrant : scene.entrants) contestants.push_back(entrant.make());
  std::vector<std::vector<double>> times(count);
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t who = (i + std::size_t(round)) % count;
      times[who].push_back(secondsOf([&] { contestants[who]->draw(); }, secondsOfOne));
    }
  }
  std::size_t fastest = 0;
  for (std::size_t i = 1; i < count; ++i) {
    if (!scene.entrants[i].isPeer) continue;
    if (fastest == 0 || median(times[i]) < median(times[fastest])) fastest = i;
  }
  const auto printRatios = [&](std::size_t who) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < times[who].size(); ++i) ratios.push_back(times[who][i] / times[fastest][i]);
    std::printf(" %6.2f  (%.2f-%.2f)", median(ratios), quantile(ratios, 0.25), quantile(ratios, 0.75));
  };
  std::printf("  %-44s", scene.name.c_str());
  printRatios(0);
  std::printf("  wanted %.2f  %-12s", scene.wanted, scene.entrants[fastest].name.c_str());
  for (std::size_t i = 1; i < count; ++i) {
    if (scene.entrants[i].isPeer) continue;
    std::printf("  %s", scene.entrants[i].name.c_str());
    printRatios(i);
  }
  std::printf("  us:");
  for (std::size_t i = 0; i < count; ++i) std::printf("  %s %.1f", scene.entrants[i].name.c_str(), median(times[i]) * 1e6);
  const std::size_t allocations = allocationsOf([&] { contestants[0]->draw(); });
  if (allocations > 0) std::printf("  (ours allocates %zu times)", allocations);
  std::printf("\n");
}

void drawOften(const Scene& scene, const Options& options) {
  for (const Entrant& entrant : scene.entrants) {
    if (entrant.name != options.only) continue;
    const std::unique_ptr<Contestant> contestant = entrant.make();
    for (int i = 0; i < options.times; ++i) contestant->draw();
  }
}

Options optionsOf(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const auto value = [&](const char* name) -> const char* {
      return argument.rfind(name, 0) == 0 ? argv[i] + std::strlen(name) : nullptr;
    };
    if (const char* rounds = value("--rounds=")) options.rounds = std::max(1, std::atoi(rounds));
    else if (const char* times = value("--times=")) options.times = std::atoi(times);
    else if (const char* filter = value("--filter=")) options.filter = filter;
    else if (const char* only = value("--only=")) options.only = only;
  }
  return options;
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) {
  const bench::Options options = bench::optionsOf(argc, argv);
  for (const bench::Scene& scene : bench::allScenes()) {
    if (scene.name.find(options.filter) == std::string::npos) continue;
    if (!options.only.empty()) {
      bench::drawOften(scene, options);
      continue;
    }
    bench::printTimes(scene, options.rounds);
    bench::printExactness(scene);
    std::fflush(stdout);
  }
  return 0;
}
