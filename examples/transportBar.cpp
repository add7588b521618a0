// A transport bar over a player that only keeps time, and a background task below it.
#include <QApplication>
#include <QTimer>
#include <QVBoxLayout>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/ready/TessalunaReady.h"

using tessaluna::ready::ShownTask;
using tessaluna::ready::TaskBar;
using tessaluna::ready::TransportBar;

namespace {

struct Player {
  bool isPlaying = true;
  double position = 62, volume = 0.8;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  const auto application = tessaluna::platform::NSApplication::sharedApplication();
  Player player;

  const auto bar = tessaluna::platform::make<TransportBar>(tessaluna::platform::CGRect{0, 0, 800, 52});
  bar->setActions({.playOrPause = [&] { player.isPlaying = !player.isPlaying; },
                   .seek = [&](double seconds) { player.position = seconds; },
                   .setVolume = [&](double volume) { player.volume = volume; }});
  bar->showSong({.title = "Slow orbit", .artists = "Amber Quartet", .seconds = 245});
  const auto showPlayer = [&] {
    bar->showState({.isPlaying = player.isPlaying, .position = player.position, .volume = player.volume});
  };

  const auto tasks = tessaluna::platform::make<TaskBar>(tessaluna::platform::CGRect{0, 0, 320, 20});
  ShownTask scan = tasks->begin({.title = "Scanning the library", .length = 60, .abort = [&] { scan.end(); }});
  scan.setPosition(20);

  QWidget window;
  auto* column = new QVBoxLayout(&window);
  column->addWidget(new tessaluna::backend::qt::QtViewWidget(bar));
  column->addWidget(new tessaluna::backend::qt::QtViewWidget(tasks));
  window.resize(824, 110);
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, [&] {
    if (player.isPlaying) player.position += 0.1;
    showPlayer();
  });
  clock.start(100);
  showPlayer();
  window.show();
  // With a file name as its argument, the program writes a picture of the window.
  if (argc == 2) return window.grab().save(argv[1]) ? 0 : 1;
  return QApplication::exec();
}
