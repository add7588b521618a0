// A search field that completes over 20,000 tracks, albums and artists. What a host does stands in SearchHost.
#include <QLabel>
#include <QVBoxLayout>

#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/search/SearchHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

using namespace tessaluna::platform;

QWidget* makeSearchPage(Report report) {
  constexpr std::size_t itemCount = 20000;
  auto* journal = new Journal;
  const auto host = make<SearchHost>(inventedLibrary(itemCount));
  host->setReport([report = std::move(report), journal](const std::string& what) {
    journal->add(what);
    report(what);
  });
  auto* page = new QWidget;
  // A delegate is not kept alive by its field: the page keeps it.
  QObject::connect(page, &QObject::destroyed, [host] {});
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->setSpacing(14);
  auto* field = new tessaluna::backend::qt::QtViewWidget(host->view());
  field->setFixedHeight(static_cast<int>(host->view()->frame().size.height));
  field->setMaximumWidth(440);
  field->setAccessibleName("search");
  column->addWidget(field);
  auto* hint =
      new QLabel("Type the beginning of any words. Arrow keys choose, Return takes, Escape gives back what you typed.");
  hint->setObjectName("cardNote");
  column->addWidget(hint);
  auto* heading = new QLabel("Taken");
  heading->setObjectName("family");
  column->addWidget(heading);
  column->addWidget(journal, 1);
  return page;
}

}  // namespace gallery
