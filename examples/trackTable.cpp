// A track table over a program's own list, in a Qt window. Closing the window ends the program.
#include <QApplication>
#include <utility>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/ready/tracks/TrackTable.h"

using namespace tessaluna;

class Queue : public ready::TrackModel {
 public:
  std::size_t count() const override { return 1000; }
  ready::TrackRow row(std::size_t i) const override {
    const auto playback = playing_ == i ? ready::Playback::Playing : ready::Playback::None;
    return {.title = "Song " + std::to_string(i), .artists = {"Someone"}, .seconds = 180, .playback = playback};
  }
  void play(std::optional<std::size_t> i) {
    if (const auto earlier = std::exchange(playing_, i)) didChangeRows(*earlier);
    if (i) didChangeRows(*i);
  }

 private:
  std::optional<std::size_t> playing_;
};

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  backend::qt::QtBackend desktop;
  const auto application = platform::NSApplication::sharedApplication();

  const auto queue = std::make_shared<Queue>();
  const auto table = platform::make<ready::TrackTable>(
      queue, ready::TrackActions{.play = [&](std::size_t i) { queue->play(i); },
                                 .pause = [&](std::size_t) { queue->play(std::nullopt); }});
  backend::qt::QtViewWidget widget(table);
  widget.resize(900, 600);
  widget.show();
  return QApplication::exec();
}
