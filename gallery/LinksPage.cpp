// Lines of links in a column whose width can be dragged, and a label whose text wraps in it. The host is
// gallery/links/LinksHost.
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QSplitter>
#include <QVBoxLayout>

#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/controlNames.h"
#include "gallery/links/LinksHost.h"
#include "gallery/parts.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr int lineHeight = 20, labelHeight = 110;
constexpr int labelPadding = 5;  // on each side of the label's text; the lines align with that
// A narrower column would have no room for "…" in a desktop's largest fonts.
constexpr int minWidth = 48, startWidth = 300;

// As wide as the column around it, whatever width its content asks for.
QWidget* embed(const Ref<NSView>& view, int height, const std::string& name) {
  auto* widget = new tessaluna::backend::qt::QtViewWidget(view);
  widget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  widget->setMinimumWidth(minWidth);
  widget->setFixedHeight(height);
  nameControl(*widget, name);
  return widget;
}

// Dragged, or moved with the arrow keys.
class Handle : public QSplitterHandle {
 public:
  explicit Handle(QSplitter* splitter) : QSplitterHandle(Qt::Horizontal, splitter) { setFocusPolicy(Qt::TabFocus); }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    constexpr int step = 10;
    switch (event->key()) {
      case Qt::Key_Left: return moveSplitter(x() - step);
      case Qt::Key_Right: return moveSplitter(x() + step);
      default: QSplitterHandle::keyPressEvent(event);
    }
  }
  void paintEvent(QPaintEvent* event) override {
    QSplitterHandle::paintEvent(event);
    if (hasFocus()) QPainter(this).fillRect(rect(), palette().color(QPalette::Highlight));
  }
};

class Sides : public QSplitter {
 public:
  Sides() : QSplitter(Qt::Horizontal) {}

 protected:
  QSplitterHandle* createHandle() override { return new Handle(this); }
};

QLabel* makeLineNote(const std::string& text) {
  QLabel* note = makeNote(QString::fromStdString(text));
  note->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  return note;
}

QWidget* makeSamples(const LinksHost& host) {
  auto* samples = new QWidget;
  samples->setMinimumWidth(minWidth);
  auto* column = new QVBoxLayout(samples);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* lines = new QVBoxLayout;
  lines->setContentsMargins(labelPadding, 0, labelPadding, 0);
  column->addLayout(lines);
  for (const LinksHost::Line& line : host.lines()) {
    lines->addWidget(makeLineNote(line.note));
    lines->addWidget(embed(line.field, lineHeight, line.name));
    lines->addSpacing(6);
  }
  lines->addWidget(makeLineNote("a text with links"));
  column->addWidget(embed(host.label(), labelHeight, "text"));
  column->addStretch(1);
  return samples;
}

}  // namespace

QWidget* makeLinksPage(Report report) {
  auto* journal = new Journal;
  const auto host = make<LinksHost>();
  host->setReport(journal->addingTo(std::move(report)));
  host->setLinksEnabled(true);
  auto* page = new QWidget;
  QObject::connect(page, &QObject::destroyed, [host] { host->close(); });
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->setSpacing(12);

  auto* enabled = new QCheckBox("Links are on");
  enabled->setChecked(true);
  QObject::connect(enabled, &QCheckBox::toggled, [host](bool isOn) { host->setLinksEnabled(isOn); });
  column->addWidget(enabled);

  auto* reported = new QWidget;
  auto* reports = new QVBoxLayout(reported);
  reports->setContentsMargins(16, 0, 0, 0);
  reports->addWidget(makeHeading("Reported"));
  reports->addWidget(journal, 1);

  auto* sides = new Sides;
  sides->setObjectName("sides");
  sides->setChildrenCollapsible(false);
  sides->addWidget(makeSamples(*host));
  sides->addWidget(reported);
  sides->setStretchFactor(1, 1);
  sides->handle(1)->setAccessibleName("Width of the lines");
  sides->setSizes({startWidth, 600});
  column->addWidget(sides, 1);
  return page;
}

}  // namespace gallery
