// Measures what playback costs. First comes a redraw of the position slider, 600 points long and with two buffers, compared
// with a QSlider that the style paints. Each paints onto its own bitmap, in turns, so that other work of the machine affects
// both. Then comes a frame of a player's window of 900 by 600 points, in which the slider, the time and one row of a track
// list change.
//
//   bench_transport [--turns=N]
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QSlider>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>

#include "bench/harness/cpuTime.h"
#include "bench/harness/statistics.h"
#include "gallery/tracks/TrackLibrary.h"
#include "gallery/transport/TransportHost.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/uikit/transport/PlaybackTransportSliderCell.h"

using namespace tessaluna::platform;

namespace {

constexpr int sliderWidth = 600, sliderHeight = 20, positions = 600;

// A slider whose knob is at a different place at each redraw, as during playback.
class KitSlider {
 public:
  explicit KitSlider(double scale)
      : scale_(scale),
        bitmap_(*tessaluna::backend::raster::Bitmap::make(int(sliderWidth * scale), int(sliderHeight * scale))) {
    slider_->setCell(cell_);
    slider_->setMaxValue(positions);
    cell_->displayLoadStatusFrom(0, positions / 2, true, positions / 2, positions / 4, false, positions);
  }
  void redraw(int position) {
    slider_->setDoubleValue(position);
    canvas_.begin(bitmap_, {.scale = scale_});
    const CanvasScope drawing(canvas_);
    slider_->drawRect(slider_->bounds());
  }

 private:
  double scale_;
  tessaluna::backend::raster::Bitmap bitmap_;
  tessaluna::backend::raster::RasterCanvas canvas_{bitmap_};  // one for all redraws, like a window's
  Ref<TessalunaUIKit::PlaybackTransportSliderCell> cell_ = make<TessalunaUIKit::PlaybackTransportSliderCell>();
  Ref<NSSlider> slider_ = make<NSSlider>(CGRect{0, 0, sliderWidth, sliderHeight});
};

class QtSlider {
 public:
  explicit QtSlider(double scale)
      : image_(int(sliderWidth * scale), int(sliderHeight * scale), QImage::Format_ARGB32_Premultiplied) {
    image_.setDevicePixelRatio(scale);
    slider_.resize(sliderWidth, sliderHeight);
    slider_.setMaximum(positions);
  }
  void redraw(int position) {
    slider_.setValue(position);
    QPainter painter(&image_);
    slider_.render(&painter, QPoint(), QRegion(), QWidget::RenderFlags());
  }

 private:
  QImage image_;
  QSlider slider_{Qt::Horizontal};
};

// The mean milliseconds per redraw in one turn.
template <class Slider>
double turn(Slider& slider) {
  const double start = bench::cpuSeconds();
  for (int position = 0; position < positions; ++position) slider.redraw(position);
  return (bench::cpuSeconds() - start) * 1e3 / positions;
}

void print(const char* what, const std::vector<double>& values, const char* unit) {
  std::printf("  %-10s %7.4f%s  (%.4f to %.4f)\n", what, bench::median(values), unit, bench::quantile(values, 0.1),
              bench::quantile(values, 0.9));
}

void compareSliders(double scale, int turns) {
  KitSlider kit(scale);
  QtSlider qt(scale);
  turn(kit);
  turn(qt);
  std::vector<double> kitTimes, qtTimes, ratios;
  for (int i = 0; i < turns; ++i) {
    kitTimes.push_back(turn(kit));
    qtTimes.push_back(turn(qt));
    ratios.push_back(kitTimes.back() / qtTimes.back());
  }
  std::printf("A redraw of a slider of 600 points at scale %g, %s style\n", scale,
              qPrintable(QApplication::style()->objectName()));
  print("the kit", kitTimes, " ms");
  print("QSlider", qtTimes, " ms");
  print("ratio", ratios, "   ");
}

// False if a frame did not change what it should.
bool measurePlayback(int frames) {
  constexpr double secondsOfFrame = 0.1;
  const auto transport =
      make<gallery::TransportHost>(std::vector<gallery::SimulatedPlayer::Song>{{"A long song", 36000, 44100}});
  const auto list = gallery::makeTrackTable(
      std::make_shared<gallery::TrackLibrary>(gallery::generatedTracks(10000), gallery::TrackLibrary::Covers::Shown),
      nullptr);
  QWidget window;
  window.resize(900, 600);
  auto* column = new QVBoxLayout(&window);
  auto* bar = new tessaluna::backend::qt::QtViewWidget(transport->view());
  bar->setFixedHeight(78);
  column->addWidget(bar);
  auto* rows = new tessaluna::backend::qt::QtViewWidget(list);
  rows->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  column->addWidget(rows, 1);
  window.show();
  const auto letEventsHappen = [] {
    for (int i = 0; i < 4; ++i) QCoreApplication::processEvents();
  };
  letEventsHappen();
  transport->player().setPlaying(true);
  transport->advance(10);
  letEventsHappen();

  std::vector<double> times;
  const double first = transport->slider()->position();
  for (int frame = 0; frame < frames; ++frame) {
    const double start = bench::cpuSeconds();
    transport->advance(secondsOfFrame);
    if (const Ref<NSView> row = list->table()->viewAtRow(2)) row->setNeedsDisplay(true);
    letEventsHappen();
    times.push_back((bench::cpuSeconds() - start) * 1e3);
    if (transport->slider()->needsDisplay()) return false;
  }
  const double played = transport->slider()->position() - first;
  std::printf("A frame of playback in a window of 900 by 600 points: slider, time and one row\n");
  print("a frame", times, " ms");
  std::printf("  at 10 frames a second %.2f %% of one core\n", bench::median(times) * 10 / 1000 * 100);
  return played > frames * secondsOfFrame * 0.9;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setStyle("fusion");
  const tessaluna::backend::qt::QtBackend desktop;
  const auto nsApplication = NSApplication::sharedApplication();
  const QStringList given = QApplication::arguments().filter("--turns=");
  const int turns = given.isEmpty() ? 100 : std::max(2, given.last().section('=', 1).toInt());
  std::printf("CPU time: median (tenth to ninetieth of 100)\n");
  for (const double scale : {1.0, 2.0}) compareSliders(scale, turns);
  if (measurePlayback(turns * 10)) return 0;
  std::fprintf(stderr, "bench_transport: a frame of playback did not show the player's position\n");
  return 1;
}
