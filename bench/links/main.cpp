// Compares lines of links with QFontMetricsF::elidedText of the same strings: how often a line is measured until it is cut
// to a width, and how long that takes. Then compares a table with links in its rows to one with plain labels. All
// comparisons are measured in turns.
//
//   bench_links [--frames=N]
#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/harness/cpuTime.h"
#include "bench/harness/statistics.h"
#include "bench/links/ArtistList.h"
#include "bench/tracklist/turn.h"
#include "gallery/tracks/InventedNames.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/uikit/links/JoinedLinks.h"

namespace {

using namespace tessaluna::platform;
using TessalunaUIKit::JoinedLinks;

// Counts the lines that are requested.
class CountingTextEngine : public tessaluna::backend::TextEngine {
 public:
  explicit CountingTextEngine(const TextEngine& engine) : engine_(engine) {}
  mutable int measures = 0;
  bool hasFamily(std::string_view family) const override { return engine_.hasFamily(family); }
  tessaluna::backend::FontMetrics metrics(const tessaluna::backend::FontDescription& font) const override {
    return engine_.metrics(font);
  }
  std::shared_ptr<const tessaluna::backend::ShapedLine> shape(
      std::u16string_view text, std::span<const tessaluna::backend::FontSpan> fonts) const override {
    ++measures;
    return engine_.shape(text, fonts);
  }
  std::vector<std::size_t> breakOpportunities(std::u16string_view text) const override {
    return engine_.breakOpportunities(text);
  }

 private:
  const TextEngine& engine_;
};

class CountingDesktop : public tessaluna::backend::qt::QtBackend {
 public:
  const tessaluna::backend::TextEngine& textEngine() const override { return engine; }
  const CountingTextEngine engine{QtBackend::textEngine()};
};

// Joined names, all different, with this many characters in total.
std::vector<std::string> line(std::size_t characters, gallery::InventedNames& names) {
  std::vector<std::string> strings;
  std::size_t length = 0;
  while (length < characters) {
    strings.push_back(names.person() + " " + std::to_string(names.below(1000000)));
    length += strings.back().size() + 2;
  }
  return strings;
}

void print(const char* what, const std::vector<double>& values, const char* unit) {
  std::printf("  %-12s %9.3f%s  (%.3f to %.3f)\n", what, bench::median(values), unit, bench::quantile(values, 0.1),
              bench::quantile(values, 0.9));
}

// Every line is used only once, since an engine remembers what it has shaped. False if a line was measured too often.
bool shorten(const CountingDesktop& desktop, std::size_t characters, int rounds) {
  gallery::InventedNames names(static_cast<std::uint32_t>(characters));
  const CGFloat size = NSFont::systemFontSize();
  const NSAttributes attributes{{NSFontAttributeName, NSFont::systemFontOfSize(size)}};
  QFont font = QGuiApplication::font();
  font.setPixelSize(int(size));
  font.setHintingPreference(QFont::PreferNoHinting);
  const QFontMetricsF metrics(font);
  std::vector<double> kitTimes, qtTimes, ratios;
  int maxMeasures = 0, bound = 0;
  for (int round = 0; round < rounds; ++round) {
    JoinedLinks links;
    links.setStrings(line(characters, names), attributes);
    const QString text = QString::fromStdU16String(links.text());
    const CGFloat width = 3.3 * static_cast<CGFloat>(characters);  // about half of the line
    const int before = desktop.engine.measures;
    double start = bench::cpuSeconds();
    const JoinedLinks::Cut cut = links.cutToWidth(width, attributes);
    kitTimes.push_back((bench::cpuSeconds() - start) * 1e6);
    maxMeasures = std::max(maxMeasures, desktop.engine.measures - before);
    bound = std::max(bound, int(std::ceil(std::log2(double(characterBorders(links.text()).size())))) + 4);
    start = bench::cpuSeconds();
    const QString elided = metrics.elidedText(text, Qt::ElideRight, width);
    qtTimes.push_back((bench::cpuSeconds() - start) * 1e6);
    ratios.push_back(kitTimes.back() / qtTimes.back());
    if (!cut.suffixPosition || elided == text) {
      std::fprintf(stderr, "bench_links: a line was not cut\n");
      return false;
    }
  }
  std::printf("A line of %zu characters cut to about half, %d lines; measures: at most %d, allowed %d\n", characters, rounds,
              maxMeasures, bound);
  print("kit", kitTimes, " us");
  print("elidedText", qtTimes, " us");
  print("ratio", ratios, "   ");
  return maxMeasures <= bound;
}

bool scroll(int frames) {
  bench::ArtistList links(bench::Artists::Links), labels(bench::Artists::Label);
  std::vector<double> linkTimes, labelTimes, ratios;
  bench::turn(links, 1);
  bench::turn(labels, 1);
  for (int frame = 0; frame < frames; frame += bench::framesInTurn) {
    linkTimes.push_back(bench::turn(links, frame));
    labelTimes.push_back(bench::turn(labels, frame));
    ratios.push_back(linkTimes.back() / labelTimes.back());
  }
  std::printf("%d rows with three artists each, 900 by 600 points, %d frames\n", bench::trackCount, frames);
  print(links.name(), linkTimes, " ms");
  print(labels.name(), labelTimes, " ms");
  print("ratio", ratios, "   ");
  const int wanted = static_cast<int>(ratios.size() + 1) * bench::framesInTurn;
  if (links.framesPainted() == wanted && labels.framesPainted() == wanted) return true;
  std::fprintf(stderr, "bench_links: a frame was left out or painted twice\n");
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const CountingDesktop desktop;
  const auto nsApplication = NSApplication::sharedApplication();
  const QStringList given = QApplication::arguments().filter("--frames=");
  const int frames = given.isEmpty() ? 2000 : std::max(bench::framesInTurn, given.last().section('=', 1).toInt());
  std::printf("CPU time: median (tenth to ninetieth of 100)\n");
  const bool isMeasured = shorten(desktop, 40, 1000) && shorten(desktop, 10000, 60) && scroll(frames);
  return isMeasured ? 0 : 1;
}
