// The window of a small player over invented songs: toolbar, search field, track table, transport bar, and a switch to a dark
// palette. The player itself only keeps time.
//
// The lines between "region" and "end" are what one concern takes; a test counts them.
#pragma once

#include <QTimer>
#include <QToolBar>
#include <QWidget>
#include <memory>

#include "Queue.h"
#include "tessaluna/ready/TessalunaReady.h"

class PlayerWindow : public QWidget {
 public:
  PlayerWindow();

  const Queue& queue() const { return *queue_; }
  void setDark(bool isDark) { dark_->setChecked(isDark); }

 private:
  void addToolBar();
  void addSearch();
  void addTracks();
  void addTransport();
  void followDarkSwitch();

  void play(std::size_t song);
  void goBy(int songs);
  void setPlaying(bool isPlaying);
  void toggleFavorite(std::size_t song);
  void advance(double seconds);
  void showState();

  const std::shared_ptr<Queue> queue_;
  tessaluna::platform::Ref<tessaluna::ready::TransportBar> bar_;
  QToolBar* toolBar_;
  QAction* dark_ = nullptr;
  QTimer clock_;
  double position_ = 0, volume_ = 0.8;
};
