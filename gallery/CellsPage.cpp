// The themed cells on a dark background and on the palette's, with short labels and with labels that are too long. The host is
// gallery/cells/CellsHost.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "gallery/BackgroundPanel.h"
#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/cells/CellsHost.h"
#include "gallery/controlNames.h"
#include "gallery/parts.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr int columnWidth = 360;

QWidget* makeColumn(const std::vector<CellsHost::Sample>& samples) {
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->addItem(new QSpacerItem(columnWidth, 0, QSizePolicy::Maximum, QSizePolicy::Fixed));
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(3);
  for (const CellsHost::Sample& sample : samples) {
    if (!sample.note.empty()) {
      if (column->count() > 0) column->addSpacing(4);
      column->addWidget(makeNote(QString::fromStdString(sample.note)));
    }
    auto* widget = new tessaluna::backend::qt::QtViewWidget(sample.control);
    widget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    widget->setFixedHeight(static_cast<int>(sample.height));
    nameControl(*widget, sample.name);
    column->addWidget(widget);
  }
  column->addStretch(1);
  return content;
}

}  // namespace

QWidget* makeCellsPage(Report report) {
  auto* journal = new Journal;
  const auto host = make<CellsHost>(journal->addingTo(std::move(report)));
  auto* page = new QWidget;
  // Controls do not keep their target alive, so the page does.
  QObject::connect(page, &QObject::destroyed, [host] {});
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->setSpacing(12);
  auto* backgrounds = new QHBoxLayout;
  backgrounds->setSpacing(16);
  column->addLayout(backgrounds);
  for (const auto& [theme, kind] :
       {std::pair(CellTheme::Dark, BackgroundKind::Dark), std::pair(CellTheme::Light, BackgroundKind::Palette)}) {
    const auto samples = host->makeSamples(theme);
    // Cells with a dark theme already have the colors of a dark background.
    if (theme == CellTheme::Dark)
      for (const CellsHost::Sample& sample : samples) keepColors(*sample.control);
    auto* background = new BackgroundPanel(makeColumn(samples));
    background->setKind(kind);
    backgrounds->addWidget(background, 1);
  }
  constexpr int tableWidth = 400, tableHeight = 107;
  QWidget* table = embed(host->makeTable({0, 0, tableWidth, tableHeight}), "albums");
  auto* foot = new QGridLayout;
  foot->setHorizontalSpacing(16);
  const auto addPart = [&](const char* title, QWidget* part) {
    const int place = foot->columnCount();
    foot->addWidget(makeHeading(title), 0, place);
    foot->addWidget(part, 1, place);
  };
  addPart("Cells in a table", table);
  addPart("Reported", journal);
  foot->setColumnStretch(foot->columnCount() - 1, 1);
  column->addLayout(foot, 1);
  return page;
}

}  // namespace gallery
