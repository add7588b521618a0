// A search field that completes over 20,000 tracks, albums and artists, at once or as if over a slow network.
#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/parts.h"
#include "gallery/search/LibrarySearch.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/time/DispatchQueue.h"
#include "tessaluna/ready/search/SearchField.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace tessaluna::ready;

namespace {

constexpr std::size_t itemCount = 20000;
constexpr double slowAnswer = 1.5;

Ref<SearchField> makeSearchField(const QCheckBox* isSlow, const Report& report) {
  const auto search = make<SearchField>(CGRect{0, 0, 440, 26});
  search->setTexts({.placeholder = "Search tracks, albums and artists"});
  const auto library = std::make_shared<LibrarySearch>(inventedLibrary(itemCount));
  search->setSource([library, isSlow](const SearchQuestion& question) {
    DispatchQueue::main().asyncAfter(isSlow->isChecked() ? slowAnswer : 0,
                                     [=] { question.answer(library->rowsFor(question.text())); });
  });
  search->setOnPick([report](const SearchRow& row) { report(row.title + " – " + row.detail); });
  search->setOnSearch([report](const std::string& text) {
    if (!text.empty()) report("search for “" + text + "”");
  });
  return search;
}

}  // namespace

QWidget* makeSearchPage(Report report) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->setSpacing(14);
  auto* journal = new Journal;
  journal->setAccessibleName("Taken");
  auto* isSlow = new QCheckBox("Answers take a while");
  auto* field = new tessaluna::backend::qt::QtViewWidget(makeSearchField(isSlow, journal->addingTo(std::move(report))));
  field->setFixedHeight(26);
  field->setMaximumWidth(440);
  column->addWidget(field);
  QLabel* hint = makeNote(
      "Type the beginning of any words. Arrow keys choose, Return takes or searches, Escape gives back what you typed.");
  hint->setWordWrap(true);
  column->addWidget(hint);
  column->addWidget(isSlow);
  column->addWidget(makeHeading("Taken"));
  column->addWidget(journal, 1);
  return page;
}

}  // namespace gallery
