// Scrolls a list of 10,000 tracks through one screen of 900 by 600 points, everything drawn in every frame: the kit's list
// and one of Qt's, in turns, so that other work of the machine affects both. Prints the CPU time per frame.
//
//   bench_tracklist [--frames=N] [--pictures=DIR]
#include <QApplication>
#include <algorithm>
#include <cstdio>

#include "bench/harness/statistics.h"
#include "bench/tracklist/KitList.h"
#include "bench/tracklist/QtList.h"
#include "bench/tracklist/turn.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/windows/NSApplication.h"

namespace {

using bench::Controls;
using bench::ScrollingList;

using bench::framesInTurn;
using bench::trackCount;
using bench::turn;

void print(const char* what, const std::vector<double>& values, const char* unit) {
  std::printf("  %-10s %6.2f%s  (%.2f to %.2f)\n", what, bench::median(values), unit, bench::quantile(values, 0.1),
              bench::quantile(values, 0.9));
}

struct Run {
  Controls controls;
  const char* title;
  const char* pictureName;
};

// False if a list did not paint every frame once.
bool compare(const Run& run, int frames, const QString& pictures) {
  const std::vector<gallery::Track> tracks = gallery::generatedTracks(trackCount);
  bench::KitList kit(tracks, run.controls);
  bench::QtList qt(tracks, run.controls);
  std::vector<double> kitTimes, qtTimes, ratios;
  turn(kit, 1);
  turn(qt, 1);
  for (int frame = 0; frame < frames; frame += framesInTurn) {
    kitTimes.push_back(turn(kit, frame));
    qtTimes.push_back(turn(qt, frame));
    ratios.push_back(kitTimes.back() / qtTimes.back());
  }
  std::printf("%s\n", run.title);
  print(kit.name(), kitTimes, " ms");
  print(qt.name(), qtTimes, " ms");
  print("ratio", ratios, "   ");
  const int wanted = static_cast<int>(ratios.size() + 1) * framesInTurn;
  for (const ScrollingList* list : {static_cast<ScrollingList*>(&kit), static_cast<ScrollingList*>(&qt)}) {
    if (list->framesPainted() == wanted) continue;
    std::fprintf(stderr, "bench_tracklist: %s painted %d times for %d frames\n", list->name(), list->framesPainted(),
                 wanted);
    return false;
  }
  if (pictures.isEmpty()) return true;
  for (ScrollingList* list : {static_cast<ScrollingList*>(&kit), static_cast<ScrollingList*>(&qt)})
    list->picture().save(pictures + "/" + list->name() + "-" + run.pictureName + ".png");
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const tessaluna::backend::qt::QtBackend desktop;
  const auto nsApplication = tessaluna::platform::NSApplication::sharedApplication();

  const QStringList arguments = QApplication::arguments();
  const auto valueOf = [&](const QString& name) {
    const QStringList found = arguments.filter(name + "=");
    return found.isEmpty() ? QString() : found.last().section('=', 1);
  };
  const int frames = valueOf("--frames").isEmpty() ? 4000 : std::max(framesInTurn, valueOf("--frames").toInt());
  const QString pictures = valueOf("--pictures");

  std::printf("%d rows, 900 by 600 points at scale 1, %d frames, CPU time for a frame: median (tenth to ninetieth of 100)\n",
              trackCount, frames);
  const bool isMeasured = compare({Controls::Hidden, "texts alone, as while scrolling", "texts"}, frames, pictures) &&
                          compare({Controls::OnEveryRow, "texts and three glyphs on every row", "glyphs"}, frames, pictures);
  return isMeasured ? 0 : 1;
}
