// A side bar of sections that fold, with buttons that make a text in it longer or shorter and that remove a section.
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

#include "gallery/Pages.h"
#include "gallery/parts.h"
#include "gallery/sections/SectionsHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

namespace {

constexpr int sideBarWidth = 300, minNoteWidth = 180, maxNoteWidth = 420;

constexpr const char* keysNote =
    "A click on a heading folds its section, and so does the button that shows while the mouse is over it. The Tab key "
    "stops "
    "at the bar once; there the arrow keys move over headings and items, Left and Right fold and open, Return chooses. What "
    "a folded section cuts off is passed over. In the notes, Command with the left or the right arrow goes to the ends of "
    "the line.";

void addButtons(QVBoxLayout& column, const std::shared_ptr<SectionsHost>& host, const Report& report) {
  const auto addButton = [&](const char* text, std::function<void()> clicked) {
    auto* button = new QPushButton(text);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QObject::connect(button, &QPushButton::clicked, std::move(clicked));
    column.addWidget(button);
  };
  const auto reportLines = [report](int lines) { report("\"Up next\" has " + std::to_string(lines) + " lines"); };
  addButton("Add a line", [host, reportLines] { reportLines(host->addLine()); });
  addButton("Take a line away", [host, reportLines] { reportLines(host->removeLine()); });
  addButton("Fold all", [host] { host->setDisclosed(false); });
  addButton("Open all", [host] { host->setDisclosed(true); });
  addButton("Take a section away", [host] { host->setHasAbout(false); });
  addButton("Bring it back", [host] { host->setHasAbout(true); });
}

}  // namespace

QWidget* makeSectionsPage(Report report) {
  const auto host = std::make_shared<SectionsHost>();
  host->sideBar()->setOnChoose([report](const tessaluna::ready::SideItem& item) { report("show " + item.title); });
  auto* page = new QWidget;
  QObject::connect(page, &QObject::destroyed, [host] {});  // it lives as long as the page
  auto* row = new QHBoxLayout(page);
  row->setContentsMargins(0, 0, 32, 24);
  row->setSpacing(24);

  auto* sideBar = new tessaluna::backend::qt::QtViewWidget(host->sideBar());
  sideBar->setFixedWidth(sideBarWidth);
  sideBar->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  sideBar->setAccessibleName("Side bar");
  row->addWidget(sideBar);

  auto* side = new QWidget;
  side->setMinimumWidth(minNoteWidth);
  side->setMaximumWidth(maxNoteWidth);
  constexpr int mostOfTheRoom = 1000;
  row->addWidget(side, mostOfTheRoom);
  row->addStretch(1);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(8);
  addButtons(*column, host, report);
  QLabel* note = makeNote(keysNote);
  note->setWordWrap(true);
  column->addWidget(note);
  column->addStretch(1);
  return page;
}

}  // namespace gallery
