// The gallery's window: a list of pages at the side, the chosen page beside it, and at the foot what the page
// reports.
#pragma once

#include <QMainWindow>
#include <vector>

#include "gallery/Pages.h"

class QLabel;
class QListWidget;
class QStackedWidget;

namespace gallery {

enum class ActionLog { Off, StandardOutput };

class GalleryWindow : public QMainWindow {
 public:
  explicit GalleryWindow(ActionLog log);
  ~GalleryWindow() override;

  void showPage(const Page& page);
  // A picture of the window as it stands, at its device scale. False if the file could not be written.
  bool saveScreenshot(const QString& file);

 private:
  void report(const std::string& what);

  ActionLog log_;
  QListWidget* list_;
  QStackedWidget* stack_;
  QLabel* foot_;
  std::vector<QWidget*> made_;  // for each page its widget, once it has been shown
};

}  // namespace gallery
