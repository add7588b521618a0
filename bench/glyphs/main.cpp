// Compares each routine of the kit, at its default size and at four times that size, with what people would use instead. In
// one round every contestant draws a routine in turn, so that compared times were measured within milliseconds of each
// other; the rounds of all routines come in random order.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "bench/glyphs/Summary.h"
#include "bench/harness/countedAllocations.h"
#include "bench/harness/cpuTime.h"
#include "bench/outlines/Exactness.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace bench {

namespace {

constexpr double secondsOfOne = 0.0005;  // per contestant and round

class DoesNothing final : public tessaluna::backend::Canvas {
 public:
  void saveState() override {}
  void restoreState() override {}
  void concat(const tessaluna::backend::CGAffineTransform&) override {}
  void clipRect(tessaluna::backend::CGRect) override {}
  void clipPath(const tessaluna::backend::Path&, tessaluna::backend::FillRule) override {}
  void setFillColor(const tessaluna::backend::Color&) override {}
  void setStrokeColor(const tessaluna::backend::Color&) override {}
  void setShadow(const tessaluna::backend::Shadow&) override {}
  void setAlpha(double) override {}
  void setBlendMode(tessaluna::backend::BlendMode) override {}
  void beginTransparencyLayer() override {}
  void endTransparencyLayer() override {}
  void fillPath(const tessaluna::backend::Path&, tessaluna::backend::FillRule) override {}
  void strokePath(const tessaluna::backend::Path&, const tessaluna::backend::StrokeStyle&) override {}
  void fillGradient(const tessaluna::backend::Path&, tessaluna::backend::FillRule,
                    const tessaluna::backend::LinearGradient&) override {}
  void drawGlyphs(const tessaluna::backend::GlyphRun&, tessaluna::backend::CGPoint) override {}
  void drawImage(const tessaluna::backend::ImagePixels&, tessaluna::backend::CGRect, tessaluna::backend::CGRect) override {}
};

Allocations allocationsOf(const Subject& subject) {
  Allocations counted;
  {
    DoesNothing canvas;
    const tessaluna::platform::CanvasScope scope(canvas);
    drawRoutine(subject.routine);  // makes what a program makes only once
    counted.itsOwn = bench::allocationsOf([&] { drawRoutine(subject.routine); });
  }
  const std::unique_ptr<Contestant> canvas = makeRoutineContestant(subject, Sight::Again);
  counted.first = bench::allocationsOf([&] { canvas->draw(); });
  counted.second = bench::allocationsOf([&] { canvas->draw(); });
  counted.later = bench::allocationsOf([&] { canvas->draw(); });
  return counted;
}

// The mean difference of two pictures' channels, of 255.
double difference(const Contestant& a, const Contestant& b, const Drawing& drawing) {
  double sum = 0;
  for (int y = 0; y < drawing.height; ++y) {
    for (int x = 0; x < drawing.width; ++x) {
      for (int shift = 0; shift < 32; shift += 8)
        sum += std::abs(int(a.row(y)[x] >> shift & 255) - int(b.row(y)[x] >> shift & 255));
    }
  }
  return sum / (4.0 * drawing.width * drawing.height);
}

// A comparison is valid only if all contestants draw the same.
void checkPictures(const Subject& subject) {
  // The mean over all pixels, of 255. Edges differ a little, and a small picture consists mostly of edges.
  const double allowed = 8 / subject.scale;
  const std::unique_ptr<Contestant> outlines = makeOutlinesContestant(subject.drawing, Sight::Again);
  outlines->draw();
  const auto check = [&](std::string_view name, std::unique_ptr<Contestant> other) {
    other->draw();
    const double off = difference(*outlines, *other, subject.drawing);
    if (off <= allowed) return;
    std::fprintf(stderr, "bench: %s at %gx by %s differs by %.2f of 255\n", subject.routine.name.data(), subject.scale,
                 name.data(), off);
    std::exit(1);
  };
  if (!subject.drawing.hasRecipe) check("the routine itself", makeRoutineContestant(subject, Sight::Again));
  for (const Peer& peer : peers) check(peer.name, peer.make(subject.drawing));
}

OffBy offByOf(const Subject& subject) {
  const ExactPicture exact = exactPictureOf(subject.drawing);
  const auto offBy = [&](const std::unique_ptr<Contestant>& contestant) {
    contestant->draw();
    return largestDifference(*contestant, exact);
  };
  OffBy off{.ours = offBy(makeOutlinesContestant(subject.drawing, Sight::Cold))};
  for (std::size_t i = 0; i < std::size(peers); ++i) off.ofPeers[i] = offBy(peers[i].make(subject.drawing));
  return off;
}

// Every contestant draws once, each time beginning with another one.
Round playRound(const Subject& subject, std::size_t turn) {
  constexpr std::size_t ownCount = 3, count = ownCount + std::size(peers);
  Round round;
  double* const ownTimes[ownCount] = {&round.routine, &round.outlines, &round.again};
  const auto own = [&](std::size_t who) {
    const Sight sight = who == 2 ? Sight::Again : Sight::Cold;
    const bool isRoutine = who == 0 || (who == 2 && !subject.drawing.hasRecipe);
    return isRoutine ? makeRoutineContestant(subject, sight) : makeOutlinesContestant(subject.drawing, sight);
  };
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t who = (i + turn) % count;
    const std::unique_ptr<Contestant> contestant = who < ownCount ? own(who) : peers[who - ownCount].make(subject.drawing);
    contestant->draw();  // the second drawing, which remembers, is the one that secondsOf does not count
    double& seconds = who < ownCount ? *ownTimes[who] : round.ofPeers[who - ownCount];
    seconds = secondsOf([&] { contestant->draw(); }, secondsOfOne);
  }
  return round;
}

void measure(benchmark::State& state, const Subject& subject, Entry& entry) {
  for (auto _ : state) {
    entry.rounds.push_back(playRound(subject, entry.rounds.size()));
    const Round& round = entry.rounds.back();
    state.SetIterationTime(round.routine);
    state.counters["outlines"] = round.outlines * 1e9;
    state.counters["again"] = round.again * 1e9;
    for (std::size_t i = 0; i < std::size(peers); ++i) state.counters[std::string(peers[i].name)] = round.ofPeers[i] * 1e9;
  }
}

int runAll(int argc, char** argv) {
  // The defaults come before the given arguments, so that these can override them.
  std::string interleaving = "--benchmark_enable_random_interleaving=true", repetitions = "--benchmark_repetitions=15";
  std::vector<char*> arguments{argv[0], interleaving.data(), repetitions.data()};
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  int count = int(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;

  const auto routines = TessalunaUIKit::routines();
  std::vector<Entry> entries;
  std::vector<Drawing> drawings;
  for (const double scale : {1.0, 4.0}) {
    for (const TessalunaUIKit::Routine& routine : routines) {
      drawings.push_back(drawingOf(routine, scale));
      entries.push_back({.routine = routine.name, .scale = scale, .hasRecipe = drawings.back().hasRecipe});
    }
  }
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const Subject subject{routines[i % routines.size()], entries[i].scale, drawings[i]};
    // One routine draws nothing by default, so there is nothing to compare.
    if (subject.drawing.outlines.empty()) continue;
    Entry& entry = entries[i];
    checkPictures(subject);
    entry.offBy = offByOf(subject);
    entry.allocations = allocationsOf(subject);
    const std::string name = std::string(entry.routine) + (entry.scale == 1 ? "/1x" : "/4x");
    benchmark::RegisterBenchmark(name.c_str(),
                                 [subject, &entry](benchmark::State& state) { measure(state, subject, entry); })
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMicrosecond);
  }
  Summary summary(entries);
  benchmark::RunSpecifiedBenchmarks(&summary);
  return 0;
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) { return bench::runAll(argc, argv); }
