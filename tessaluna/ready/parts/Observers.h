// Who is notified by a model. Not kept alive: an observer removes itself before it ends, even while others are notified.
#pragma once

#include <algorithm>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::ready {

template <class Observer>
class Observers {
 public:
  void add(Observer& observer) { all_.push_back(&observer); }
  void remove(Observer& observer) { std::erase(all_, &observer); }

  template <class Call>
  void notify(Call call) const {
    const std::vector<Observer*> now = all_;
    for (Observer* observer : now)
      if (std::find(all_.begin(), all_.end(), observer) != all_.end()) call(*observer);
  }

 private:
  std::vector<Observer*> all_;
};

}  // namespace tessaluna::ready
