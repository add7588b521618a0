// A small player's window over invented music. What a host does is in gallery/player/PlayerView.
#include <QVBoxLayout>

#include "gallery/Pages.h"
#include "gallery/parts.h"
#include "gallery/player/PlayerView.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

QWidget* makePlayerPage(Report report) {
  constexpr std::size_t albumCount = 24, firstSong = 2;
  constexpr double taskSeconds = 240, secondsBefore = 72;
  const auto library = std::make_shared<MusicLibrary>(albumCount);
  const auto player = tessaluna::platform::make<PlayerView>(tessaluna::platform::CGRect{0, 0, 900, 600}, library);
  // In the middle of a song.
  player->show(player->collections().sections().back().collections.front());
  player->player().play(library->playlists().front().songs, firstSong);
  player->tasks().begin("Finding covers", taskSeconds);
  player->advance(secondsBefore);
  player->setReport(std::move(report));
  player->start();
  auto* widget = new tessaluna::backend::qt::QtViewWidget(player);
  widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  widget->setMinimumSize(300, 260);
  widget->setAccessibleName("player");

  QWidget* frame = makePanel("window");
  auto* window = new QVBoxLayout(frame);
  window->setContentsMargins(1, 1, 1, 1);
  window->addWidget(widget);

  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->addWidget(frame);
  return page;
}

}  // namespace gallery
