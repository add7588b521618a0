// A search field over a few songs in a Qt window. It prints what the user picks or searches for.
#include <QApplication>
#include <cstdio>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/time/DispatchQueue.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/ready/search/SearchField.h"
#include "tessaluna/ready/search/matchedLetters.h"

using namespace tessaluna::ready;
using tessaluna::platform::DispatchQueue;

namespace {

std::vector<SearchRow> songsLike(const std::string& typed) {
  std::vector<SearchRow> rows;
  for (const char* title : {"Blue Bayou", "Blue Monday", "Silver Tide"})
    if (!matchedLetters(title, typed).empty()) rows.push_back({.title = title, .section = "Tracks"});
  return rows;
}

void askElsewhere(const tessaluna::platform::Ref<SearchField>& search) {
  search->setDelay(0.15);
  search->setSource([](const SearchQuestion& question) {
    DispatchQueue::main().answer([typed = question.text()] { return songsLike(typed); },
                                 [question](const std::vector<SearchRow>& rows) { question.answer(rows); });
  });
}

}  // namespace

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  const auto application = tessaluna::platform::NSApplication::sharedApplication();

  const auto search = tessaluna::platform::make<SearchField>(tessaluna::platform::CGRect{0, 0, 320, 26});
  search->setSource([](const SearchQuestion& question) { question.answer(songsLike(question.text())); });
  search->setOnPick([](const SearchRow& row) { std::printf("play %s\n", row.title.c_str()); });
  search->setOnSearch([](const std::string& text) { std::printf("show all for %s\n", text.c_str()); });
  tessaluna::backend::qt::QtViewWidget widget(search);
  if (argc > 1) askElsewhere(search);
  widget.resize(320, 26);
  widget.show();
  return QApplication::exec();
}
