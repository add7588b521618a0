// A transport bar over a simulated player, and every look of its button and of its slider. The host is
// gallery/transport/TransportHost.
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "gallery/BackgroundPanel.h"
#include "gallery/FlowLayout.h"
#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/parts.h"
#include "gallery/transport/TransportHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tessaluna/uikit/transport/PlaybackTransportSliderCell.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr double fastNetwork = 8, slowNetwork = 0.6;

const std::vector<SimulatedPlayer::Song>& songs() {
  static const std::vector<SimulatedPlayer::Song> list{
      {"Harbor Lights", 212, 44100}, {"Second Tide", 95, 96000}, {"The Long Night, three hours at 192 kHz", 10800, 192000}};
  return list;
}

// The seven styles side by side, at rest, pressed and on.
QWidget* makeButtonLooks(BackgroundKind background) {
  constexpr const char* styles[] = {"play", "pause", "stop", "previous", "next", "shuffle", "repeat"};
  struct Look {
    const char* name;
    NSControlStateValue state;
    bool isHighlighted;
  };
  constexpr Look looks[] = {{"at rest", NSControlStateValueOff, false},
                            {"pressed", NSControlStateValueOff, true},
                            {"on", NSControlStateValueOn, false},
                            {"on, pressed", NSControlStateValueOn, true}};
  constexpr CGFloat size = 24;
  auto* content = new QWidget;
  QGridLayout* grid = makeGrid(content, 12, 8);
  int row = 0;
  for (const Look& look : looks) {
    grid->addWidget(makeNote(look.name), row, 0);
    std::uint64_t style = 0;
    for (const char* name : styles) {
      const auto button = make<PlaybackTransportButton>(CGRect{0, 0, size, size});
      button->setTransportButtonStyle(++style);
      button->setState(look.state);
      button->setHighlighted(look.isHighlighted);
      button->setToolTip(name);
      tintForBackground(*button, background);
      QWidget* widget = embed(button, QString("%1 %2").arg(name, look.name));
      widget->setFocusPolicy(Qt::NoFocus);
      grid->addWidget(widget, row, static_cast<int>(style));
    }
    ++row;
  }
  auto* framed = new BackgroundPanel(content);
  framed->setKind(background);
  return framed;
}

struct SliderLook {
  const char* note;
  double seconds;
  LoadedSpan first, second;
};
constexpr std::uint64_t rate = 44100;
constexpr SliderLook sliderLooks[] = {
    {"nothing loaded", 60, {}, {}},
    {"two buffers across and after the position", 60, {40 * rate, 50 * rate, true}, {90 * rate, 40 * rate}},
    {"a buffer before the position, one apart", 120, {0, 60 * rate, true}, {150 * rate, 30 * rate, true}},
    {"all of the song loaded", 150, {0, 0, true}, {}},
};

QWidget* makeSliderLooks() {
  constexpr double songSeconds = 200;
  auto* looks = new QWidget;
  QGridLayout* grid = makeGrid(looks, 16, 6);
  int row = 0;
  for (const SliderLook& look : sliderLooks) {
    const auto slider = make<PlaybackSlider>(CGRect{0, 0, 220, 20});
    slider->beginSong({.seconds = songSeconds, .framesPerSecond = rate});
    slider->setPosition(look.seconds);
    slider->showLoaded(look.first, look.second);
    slider->setSeekable(false);
    grid->addWidget(embed(slider, look.note), row, 0);
    grid->addWidget(makeNote(look.note), row++, 1);
  }
  return looks;
}

// The platform's own sliders: plain, with tick marks, disabled and vertical, and a level indicator that can be changed.
QWidget* makeStockSliders() {
  const auto makeSlider = [](CGSize size, double value) {
    const auto slider = make<NSSlider>(CGRect{{0, 0}, size});
    slider->setDoubleValue(value);
    return slider;
  };
  const auto plain = makeSlider({150, 20}, 0.3), marked = makeSlider({150, 27}, 0.5), pale = makeSlider({150, 20}, 0.6),
             upright = makeSlider({20, 90}, 0.7);
  marked->setNumberOfTickMarks(5);
  marked->setAllowsTickMarkValuesOnly(true);
  pale->setEnabled(false);
  auto* sliders = new QWidget;
  auto* row = new QHBoxLayout(sliders);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(20);
  auto* column = new QVBoxLayout;
  column->setSpacing(8);
  column->addWidget(embed(plain, "plain slider"));
  column->addWidget(embed(marked, "slider with tick marks"));
  column->addWidget(embed(pale, "disabled slider"));
  const auto level = make<NSLevelIndicator>(CGRect{0, 0, 150, 18});
  level->setLevelIndicatorStyle(NSLevelIndicatorStyleContinuousCapacity);
  level->setMaxValue(10);
  level->setNumberOfTickMarks(11);
  level->setNumberOfMajorTickMarks(3);
  level->setDoubleValue(6);
  level->setEditable(true);
  column->addWidget(embed(level, "level with tick marks"));
  column->addStretch(1);
  row->addLayout(column);
  row->addWidget(embed(upright, "upright slider"));
  row->addStretch(1);
  return sliders;
}

// A heading with the widgets below it.
QWidget* makeGroup(const QString& heading, QWidget* content) {
  auto* group = new QWidget;
  auto* column = new QVBoxLayout(group);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(10);
  column->addWidget(makeHeading(heading));
  column->addWidget(content);
  column->addStretch(1);
  return group;
}

QLayout* makeChoices(const std::shared_ptr<TransportHost>& host) {
  auto* slow = new QCheckBox("Slow network");
  QObject::connect(slow, &QCheckBox::toggled,
                   [host](bool isSlow) { host->player().setLoadingSpeed(isSlow ? slowNetwork : fastNetwork); });
  auto* locked = new QCheckBox("Not seekable");
  QObject::connect(locked, &QCheckBox::toggled, [host](bool isLocked) { host->bar()->slider()->setSeekable(!isLocked); });
  auto* choices = new QHBoxLayout;
  choices->setSpacing(20);
  choices->addWidget(slow);
  choices->addWidget(locked);
  choices->addStretch(1);
  return choices;
}

}  // namespace

QWidget* makeTransportPage(Report report) {
  auto* journal = new Journal;
  const auto host = std::make_shared<TransportHost>(songs());
  host->setReport(journal->addingTo(std::move(report)));
  host->player().setPlaying(true);
  host->advance(57);
  host->start();

  auto* page = new QWidget;
  QObject::connect(page, &QObject::destroyed, [host] {});  // it lives as long as the page
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->setSpacing(12);

  column->addWidget(makeHeading("TransportBar"));
  auto* bar = new tessaluna::backend::qt::QtViewWidget(host->bar());
  bar->setFixedHeight(static_cast<int>(host->bar()->frame().size.height));
  constexpr int minBarWidth = 320;
  bar->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  bar->setMinimumWidth(minBarWidth);
  bar->setAccessibleName("transport");
  column->addWidget(bar);
  column->addLayout(makeChoices(host));

  column->addWidget(makeHeading("PlaybackTransportButton"));
  // In a narrow window, one below the other.
  auto* backgrounds = new QWidget;
  auto* backgroundFlow = new FlowLayout(backgrounds);
  for (const BackgroundKind background : {BackgroundKind::Palette, BackgroundKind::Dark})
    backgroundFlow->addWidget(makeButtonLooks(background));
  column->addWidget(backgrounds);
  auto* sliders = new QWidget;
  auto* sliderFlow = new FlowLayout(sliders);
  sliderFlow->addWidget(makeGroup("PlaybackTransportSliderCell", makeSliderLooks()));
  sliderFlow->addWidget(makeGroup("NSSlider, NSLevelIndicator", makeStockSliders()));
  column->addWidget(sliders);
  column->addWidget(makeHeading("Reported"));
  column->addWidget(journal, 1);
  return page;
}

}  // namespace gallery
