#include "PlayerWindow.h"

#include <QAction>
#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QVBoxLayout>
#include <utility>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/qt/icons.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

using namespace tessaluna::ready;
using tessaluna::backend::qt::iconOfDrawing;
using tessaluna::backend::qt::IconRole;
using tessaluna::backend::qt::QtViewWidget;
using tessaluna::platform::CGRect;
using tessaluna::platform::make;
using TessalunaUIKit::TessalunaStyleKit;

PlayerWindow::PlayerWindow() : queue_(std::make_shared<Queue>()), toolBar_(new QToolBar) {
  queue_->songs = {{"Slow Orbit", "Amber Quartet", 245},     {"Blue Bayou Road", "Mira Holm", 198, true},
                   {"Silver Tide", "The Lanterns", 312},     {"Copper Rain", "Amber Quartet", 177},
                   {"Night Ferry", "Ole Brandt", 221, true}, {"Blue Hour", "The Lanterns", 264}};
  setWindowTitle("Player");
  auto* column = new QVBoxLayout(this);
  column->addWidget(toolBar_);
  addToolBar();
  addSearch();
  addTracks();
  addTransport();
  followDarkSwitch();
  connect(&clock_, &QTimer::timeout, this, [this] { advance(0.25); });
  clock_.start(250);
  play(0);
  setPlaying(false);
}

void PlayerWindow::addToolBar() {
  // region: toolbar
  const QSize size(22, 22);
  const auto heart = [](CGRect frame) { TessalunaStyleKit::drawMoodLove(frame, false); };
  const auto sun = [](CGRect frame) { TessalunaStyleKit::drawMoodSeasonal(frame, false); };
  toolBar_->setIconSize(size);
  toolBar_->addAction(iconOfDrawing({50, 50}, TessalunaStyleKit::drawTidalIconNew, {.role = IconRole::ButtonText}), "Home");
  toolBar_->addAction(iconOfDrawing({50, 50}, TessalunaStyleKit::drawTidalIconPlaylist, {.role = IconRole::ButtonText}),
                      "Lists");
  toolBar_->addAction(iconOfDrawing({200, 200}, heart, {.role = IconRole::ButtonText}), "Favorite",
                      [this] { toggleFavorite(queue_->current); });
  dark_ = toolBar_->addAction(iconOfDrawing({200, 200}, sun, {.role = IconRole::ButtonText}), "Dark");
  dark_->setCheckable(true);
  // end
}

void PlayerWindow::addSearch() {
  // region: search field
  const auto search = make<SearchField>(CGRect{0, 0, 320, 26});
  search->setSource([this](const SearchQuestion& question) {
    std::vector<SearchRow> rows;
    for (std::size_t i = 0; i < queue_->count(); ++i)
      if (const Song& song = queue_->songs[i]; !matchedLetters(song.title, question.text()).empty())
        rows.push_back({.title = song.title, .detail = song.artist, .id = std::int64_t(i)});
    question.answer(rows);
  });
  search->setOnPick([this](const SearchRow& row) { play(std::size_t(row.id)); });
  toolBar_->addWidget(new QtViewWidget(search));
  // end
}

void PlayerWindow::addTracks() {
  // region: track table
  TrackActions actions{.play = [this](std::size_t song) { play(song); },
                       .pause = [this](std::size_t) { setPlaying(false); },
                       .favorite = [this](std::size_t song) { toggleFavorite(song); }};
  layout()->addWidget(new QtViewWidget(make<TrackTable>(queue_, std::move(actions))));
  // end
}

void PlayerWindow::addTransport() {
  // region: transport bar
  bar_ = make<TransportBar>(CGRect{0, 0, 800, 52});
  bar_->setActions({.previous = [this] { goBy(-1); },
                    .playOrPause = [this] { setPlaying(queue_->playback != Playback::Playing); },
                    .next = [this] { goBy(1); },
                    .seek = [this](double seconds) { position_ = seconds; },
                    .setVolume = [this](double volume) { volume_ = volume; }});
  layout()->addWidget(new QtViewWidget(bar_));
  // end
}

void PlayerWindow::followDarkSwitch() {
  // region: theme
  tessaluna::platform::setNeutralsFollowPalette(true);
  const QPalette dark(QColor("#3a3c42"), QColor("#222327"));
  connect(dark_, &QAction::toggled, this, [dark](bool isDark) { QApplication::setPalette(isDark ? dark : QPalette()); });
  // end
}

void PlayerWindow::play(std::size_t song) {
  queue_->show(std::exchange(queue_->current, song));
  position_ = 0;
  const Song& played = queue_->songs[song];
  // region: transport bar
  bar_->showSong({.title = played.title, .artists = played.artist, .seconds = played.seconds});
  // end
  setPlaying(true);
}

void PlayerWindow::showState() {
  // region: transport bar
  bar_->showState({.isPlaying = queue_->playback == Playback::Playing, .position = position_, .volume = volume_});
  // end
}

void PlayerWindow::goBy(int songs) {
  const int count = int(queue_->count());
  play(std::size_t((int(queue_->current) + songs + count) % count));
}

void PlayerWindow::setPlaying(bool isPlaying) {
  queue_->playback = isPlaying ? Playback::Playing : Playback::Paused;
  queue_->show(queue_->current);
  showState();
}

void PlayerWindow::toggleFavorite(std::size_t song) {
  queue_->songs[song].isFavorite = !queue_->songs[song].isFavorite;
  queue_->show(song);
}

void PlayerWindow::advance(double seconds) {
  if (queue_->playback != Playback::Playing) return;
  position_ += seconds;
  if (position_ >= queue_->songs[queue_->current].seconds) goBy(1);
  showState();
}
