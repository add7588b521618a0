// The last reports, the newest first.
#pragma once

#include <QListWidget>
#include <string>

#include "gallery/Pages.h"

namespace gallery {

class Journal : public QListWidget {
 public:
  Journal();

  void add(const std::string& line);
  // A report that adds to the journal and then calls the next report. The journal must outlive it.
  Report addingTo(Report next);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int count_ = 0;
};

}  // namespace gallery
