// A track table in German: its own words, and those that the controls look up.
#include <QApplication>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/ready/tracks/TrackTable.h"

using namespace tessaluna;

class Songs : public ready::TrackModel {
 public:
  std::size_t count() const override { return 3; }
  ready::TrackRow row(std::size_t i) const override { return {.title = "Lied " + std::to_string(i), .seconds = 200}; }
};

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  backend::qt::QtBackend desktop;
  const auto application = platform::NSApplication::sharedApplication();

  platform::NSBundle::mainBundle()->setStringTable({{"Copy", "Kopieren"}, {"Paste", "Einfügen"}});
  const auto table = platform::make<ready::TrackTable>(std::make_shared<Songs>(), ready::TrackActions{});
  table->setTexts({.title = "Titel", .artists = "Interpret", .time = "Dauer", .play = "Abspielen", .pause = "Anhalten"});
  backend::qt::QtViewWidget widget(table);
  widget.show();
  return QApplication::exec();
}
