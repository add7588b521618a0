#include "bench/glyphs/Summary.h"

#include <cstdio>

#include "bench/harness/statistics.h"

namespace bench {

namespace {

// The project's targets.
constexpr double wantedMean = 0.6, wantedMeanAgain = 0.25, wantedMax = 1.0;

std::vector<double> timesOf(const Entry& entry, std::size_t peer) {
  std::vector<double> times;
  for (const Round& round : entry.rounds) times.push_back(round.ofPeers[peer]);
  return times;
}

std::size_t fastestPeer(const Entry& entry) {
  std::size_t fastest = 0;
  for (std::size_t i = 1; i < std::size(peers); ++i)
    if (median(timesOf(entry, i)) < median(timesOf(entry, fastest))) fastest = i;
  return fastest;
}

// The time that is compared: that of the routine itself, or only of its outlines if it does what peers cannot.
double ours(const Entry& entry, const Round& round) { return entry.hasRecipe ? round.outlines : round.routine; }

double oursAgain(const Entry&, const Round& round) { return round.again; }

using OurTime = double (*)(const Entry&, const Round&);

// One ratio per round, of times that were measured close to each other.
std::vector<double> ratiosOf(const Entry& entry, OurTime time) {
  const std::size_t fastest = fastestPeer(entry);
  std::vector<double> ratios;
  for (const Round& round : entry.rounds) ratios.push_back(time(entry, round) / round.ofPeers[fastest]);
  return ratios;
}

double medianMicroseconds(const Entry& entry, OurTime time) {
  std::vector<double> times;
  for (const Round& round : entry.rounds) times.push_back(time(entry, round) * 1e6);
  return median(times);
}

void printSpread(const std::vector<double>& ratios) {
  std::printf("%5.2f  %5.2f-%.2f", median(ratios), quantile(ratios, 0.25), quantile(ratios, 0.75));
}

void printRow(const Entry& entry) {
  std::printf("  %-24.*s %8.2f %8.2f", int(entry.routine.size()), entry.routine.data(), medianMicroseconds(entry, ours),
              medianMicroseconds(entry, oursAgain));
  for (std::size_t i = 0; i < std::size(peers); ++i) std::printf(" %8.2f", median(timesOf(entry, i)) * 1e6);
  std::printf("   ");
  printSpread(ratiosOf(entry, ours));
  std::printf("   ");
  printSpread(ratiosOf(entry, oursAgain));
  std::printf("  %s\n", peers[fastestPeer(entry)].name.data());
}

void printColumns(const char* text, const char* unit, const char* ours) {
  std::printf("\n%s\n  %-24s %s", text, unit, ours);
  for (const Peer& peer : peers) std::printf(" %8s", peer.name.data());
}

void printHeading(const char* text) {
  printColumns(text, "microseconds", "    cold    again");
  std::printf("   cold/fastest, quartiles;   again/fastest\n");
}

// Prints the mean over all these entries, by round, and the worst entry.
void printMean(const std::vector<const Entry*>& entries, const char* what, OurTime time, double wanted) {
  std::vector<std::vector<double>> rounds;  // by round, the ratios of all entries
  const Entry* worst = nullptr;
  double maxRatio = 0;
  int above = 0;
  for (const Entry* entry : entries) {
    const std::vector<double> ratios = ratiosOf(*entry, time);
    rounds.resize(std::max(rounds.size(), ratios.size()));
    for (std::size_t i = 0; i < ratios.size(); ++i) rounds[i].push_back(ratios[i]);
    if (median(ratios) > wantedMax) ++above;
    if (worst && median(ratios) <= maxRatio) continue;
    worst = entry;
    maxRatio = median(ratios);
  }
  std::vector<double> means;
  for (const std::vector<double>& ratios : rounds) means.push_back(geometricMean(ratios));
  std::printf("  Geometric mean of %zu routines, %s: ", entries.size(), what);
  printSpread(means);
  std::printf("; wanted %.2f\n  Worst: %.*s, %.2f; above %.1f: %d routines\n", wanted, int(worst->routine.size()),
              worst->routine.data(), maxRatio, wantedMax, above);
}

void printOffBy(std::string_view name, const OffBy& off) {
  std::printf("  %-24.*s %8.1f", int(name.size()), name.data(), off.ours);
  for (const double ofPeer : off.ofPeers) std::printf(" %8.1f", ofPeer);
  std::printf("\n");
}

}  // namespace

void Summary::Finalize() {
  for (const double scale : {1.0, 4.0}) {
    printSize(scale);
    printRecipes(scale);
  }
  for (const double scale : {1.0, 4.0}) printExactness(scale);
  printAllocations();
}

void Summary::printSize(double scale) {
  printHeading(scale == 1 ? "Default size: routines of plain fills and strokes, called as a program calls them"
                          : "Four times the default size");
  std::vector<const Entry*> shown;
  for (const Entry& entry : entries_) {
    if (entry.scale != scale || entry.hasRecipe || entry.rounds.empty()) continue;
    printRow(entry);
    shown.push_back(&entry);
  }
  if (shown.empty()) return;
  printMean(shown, "cold", ours, wantedMean);
  printMean(shown, "drawn again", oursAgain, wantedMeanAgain);
}

void Summary::printRecipes(double scale) {
  const auto isShown = [&](const Entry& entry) { return entry.scale == scale && entry.hasRecipe && !entry.rounds.empty(); };
  if (std::none_of(entries_.begin(), entries_.end(), isShown)) return;
  printHeading(scale == 1 ? "Default size: routines with inner shadow or gradient, their outlines only"
                          : "Four times the default size: outlines only of those with inner shadow or gradient");
  std::vector<double> medians;
  for (const Entry& entry : entries_) {
    if (!isShown(entry)) continue;
    printRow(entry);
    medians.push_back(median(ratiosOf(entry, ours)));
  }
  std::printf("  Geometric mean of %zu routines: %5.2f\n", medians.size(), geometricMean(medians));
  std::printf("  The whole routine, with its gradients and inner shadows, and what these cost:\n");
  const auto whole = [](const Entry&, const Round& round) { return round.routine; };
  const auto recipe = [](const Entry&, const Round& round) { return round.routine - round.outlines; };
  for (const Entry& entry : entries_) {
    if (!isShown(entry)) continue;
    std::printf("  %-24.*s %8.2f %8.2f\n", int(entry.routine.size()), entry.routine.data(), medianMicroseconds(entry, whole),
                medianMicroseconds(entry, recipe));
  }
}

void Summary::printExactness(double scale) {
  printColumns(scale == 1 ? "Default size: the largest difference from the exact picture of the outlines"
                          : "Four times the default size: the largest difference from the exact picture of the outlines",
               "of 255", "    ours");
  std::printf("\n");
  OffBy most;
  std::vector<double> ours;
  std::array<std::vector<double>, std::size(peers)> ofPeers;
  for (const Entry& entry : entries_) {
    if (entry.scale != scale || entry.rounds.empty()) continue;
    printOffBy(entry.routine, entry.offBy);
    ours.push_back(entry.offBy.ours);
    most.ours = std::max(most.ours, entry.offBy.ours);
    for (std::size_t i = 0; i < std::size(peers); ++i) {
      ofPeers[i].push_back(entry.offBy.ofPeers[i]);
      most.ofPeers[i] = std::max(most.ofPeers[i], entry.offBy.ofPeers[i]);
    }
  }
  if (ours.empty()) return;
  OffBy half{.ours = median(ours)};
  for (std::size_t i = 0; i < std::size(peers); ++i) half.ofPeers[i] = median(ofPeers[i]);
  printOffBy("median", half);
  printOffBy("most", most);
}

void Summary::printAllocations() {
  std::printf(
      "\nBlocks of memory that the routine asks for: in the first drawing on a new canvas, in the second one, in each "
      "later\n"
      "one, of these for its own colors and path objects, and by the canvas\n");
  for (const Entry& entry : entries_) {
    if (entry.rounds.empty()) continue;
    const Allocations& a = entry.allocations;
    std::printf("  %-24.*s %gx %6zu %6zu %6zu %6zu %6zu\n", int(entry.routine.size()), entry.routine.data(), entry.scale,
                a.first, a.second, a.later, a.itsOwn, a.later - a.itsOwn);
  }
}

}  // namespace bench
