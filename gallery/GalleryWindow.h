// The gallery's window: a list of pages at the side, the chosen page beside it, and the page's reports at the bottom.
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

  // A page is made when it is first shown.
  void showPage(const Page& page);

 protected:
  bool event(QEvent* event) override;

 private:
  QWidget* makeSidebar();
  QWidget* makeContent();
  void showRow(int row);
  void report(const std::string& what);
  void printLine(const QString& line) const;
  void printPlaces() const;

  ActionLog log_;
  QListWidget* list_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  QLabel* foot_ = nullptr;
  std::vector<QWidget*> made_;  // one per page; null until it is made
};

}  // namespace gallery
