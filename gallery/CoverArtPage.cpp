// Covers of all shapes, which a click enlarges, and the edges of the screen that they must stay within. The host is
// gallery/covers/CoverArtHost.
#include <QCheckBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "gallery/FlowLayout.h"
#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/Shelf.h"
#include "gallery/covers/CoverArtHost.h"
#include "gallery/parts.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr int changePeriod = 2000;  // milliseconds

QWidget* makeCard(const CoverArtHost::Cover& cover) {
  QWidget* card = makePanel("card");
  auto* column = new QVBoxLayout(card);
  column->setContentsMargins(12, 12, 12, 12);
  column->setSpacing(3);
  auto* widget = new tessaluna::backend::qt::QtViewWidget(cover.ground);
  constexpr int size = static_cast<int>(CoverArtHost::groundSize);
  widget->setFixedSize(size, size);
  widget->setAccessibleName(QString::fromStdString(cover.name));
  column->addWidget(widget, 0, Qt::AlignHCenter);
  column->addSpacing(5);
  for (const auto& [text, look] : {std::pair(cover.name, "cardName"), std::pair(cover.note, "cardNote")}) {
    auto* label = new QLabel(QString::fromStdString(text));
    label->setObjectName(look);
    label->setFixedWidth(188);
    column->addWidget(label);
  }
  column->addStretch(1);
  return card;
}

QCheckBox* makeSwitch(const char* text, bool isOn, const std::function<void(bool)>& changed) {
  auto* box = new QCheckBox(text);
  QObject::connect(box, &QCheckBox::toggled, changed);
  box->setChecked(isOn);
  changed(isOn);
  return box;
}

QLayout* makeSwitches(QWidget* page, const Ref<CoverArtHost>& host) {
  auto* clock = new QTimer(page);
  clock->setInterval(changePeriod);
  QObject::connect(clock, &QTimer::timeout, [host] { host->changeImage(); });
  const auto runClock = [clock](bool isOn) {
    if (isOn) clock->start();
    else clock->stop();
  };
  auto* switches = new QGridLayout;
  switches->setHorizontalSpacing(24);
  switches->setColumnStretch(2, 1);
  switches->addWidget(makeSwitch("A click and Escape close an enlarged cover", true,
                                 [host](bool isOn) { host->setClosesByClickAndEscape(isOn); }),
                      0, 0);
  switches->addWidget(
      makeSwitch("Large images are decoded in the background", true, [host](bool isOn) { host->setPreparesImages(isOn); }),
      1, 0);
  switches->addWidget(makeSwitch("A pixel of the image is one of the screen", false,
                                 [host](bool isOn) { host->setScaleToScreenResolution(isOn); }),
                      0, 1);
  switches->addWidget(makeSwitch("The last cover changes every two seconds", false, runClock), 1, 1);
  return switches;
}

struct ScreenEdge {
  const char* text;
  double x, y;  // the shares of the free room that are left of the window and above it
};
constexpr ScreenEdge edges[] = {{"Left", 0, 0.5}, {"Right", 1, 0.5}, {"Top", 0.5, 0}, {"Bottom", 0.5, 1}};

void moveToEdge(QWidget& window, const ScreenEdge& edge) {
  const QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
  const QRect room = screen->availableGeometry();
  const QSize size = window.frameGeometry().size();
  window.move(room.x() + static_cast<int>((room.width() - size.width()) * edge.x),
              room.y() + static_cast<int>((room.height() - size.height()) * edge.y));
}

QWidget* makeEdges(QWidget* page) {
  auto* row = new QWidget;
  auto* buttons = new QHBoxLayout(row);
  buttons->setContentsMargins(0, 0, 0, 0);
  buttons->setSpacing(6);
  auto* label = new QLabel("This window to the screen's edge:");
  buttons->addWidget(label);
  for (const ScreenEdge& edge : edges) {
    auto* button = new QPushButton(edge.text);
    QObject::connect(button, &QPushButton::clicked, page, [page, edge] { moveToEdge(*page->window(), edge); });
    buttons->addWidget(button);
  }
  buttons->addStretch(1);
  return row;
}

}  // namespace

QWidget* makeCoverArtPage(Report report) {
  auto* journal = new Journal;
  const auto host = make<CoverArtHost>();
  host->setReport(journal->addingTo(std::move(report)));
  auto* page = new QWidget;
  QObject::connect(page, &QObject::destroyed, [host] { host->setReport(nullptr); });
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->setSpacing(10);

  auto* cards = new QWidget;
  auto* flow = new FlowLayout(cards);
  for (const CoverArtHost::Cover& cover : host->covers()) flow->addWidget(makeCard(cover));
  // The reports get the room that the covers leave.
  constexpr int shareOfTheRoom = 1000;
  column->addWidget(new Shelf(cards, "Covers"), shareOfTheRoom);

  column->addLayout(makeSwitches(page, host));
  column->addWidget(makeEdges(page));

  column->addWidget(makeHeading("Reported"));
  journal->setMinimumHeight(60);
  column->addWidget(journal, 1);
  return page;
}

}  // namespace gallery
