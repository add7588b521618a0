// What was reported last, the newest line first.
#pragma once

#include <QListWidget>
#include <string>

#include "gallery/Pages.h"

namespace gallery {

class Journal : public QListWidget {
 public:
  Journal();

  void add(const std::string& line);
  // A report that adds to the journal, and passes on to another one. The journal outlives it.
  Report addingTo(Report next);

 private:
  int count_ = 0;
};

}  // namespace gallery
