// What was reported last, the newest line first.
#pragma once

#include <QListWidget>
#include <string>

namespace gallery {

class Journal : public QListWidget {
 public:
  Journal();

  void add(const std::string& line);

 private:
  int count_ = 0;
};

}  // namespace gallery
