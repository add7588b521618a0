// A list of objects that are linked through themselves: nothing is allocated, and an entry leaves in constant time, also by
// ending, whichever list it is in. It is in one at most.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

// What an entry derives from.
class ListLink {
 public:
  ListLink() = default;
  ListLink(const ListLink&) = delete;
  ListLink& operator=(const ListLink&) = delete;
  ~ListLink() { leaveList(); }

  bool isInList() const { return next_ != this; }
  void leaveList() {
    previous_->next_ = next_;
    next_->previous_ = previous_;
    previous_ = next_ = this;
  }

 private:
  friend class LinkedList;
  ListLink* previous_ = this;
  ListLink* next_ = this;
};

// Keeps nobody alive. The entries that are left when it ends are in no list afterwards.
class LinkedList {
 public:
  ~LinkedList() {
    while (takeFirst())
      ;
  }

  bool isEmpty() const { return !ends_.isInList(); }
  void append(ListLink& entry) {
    entry.leaveList();
    entry.previous_ = ends_.previous_;
    entry.next_ = &ends_;
    ends_.previous_->next_ = &entry;
    ends_.previous_ = &entry;
  }
  // Null where there is none.
  ListLink* takeFirst() {
    if (isEmpty()) return nullptr;
    ListLink* first = ends_.next_;
    first->leaveList();
    return first;
  }
  // The other list is empty afterwards.
  void appendAllOf(LinkedList& other) {
    if (other.isEmpty()) return;
    ListLink* first = other.ends_.next_;
    ListLink* last = other.ends_.previous_;
    other.ends_.previous_ = other.ends_.next_ = &other.ends_;
    first->previous_ = ends_.previous_;
    last->next_ = &ends_;
    ends_.previous_->next_ = first;
    ends_.previous_ = last;
  }

 private:
  ListLink ends_;  // before the first entry and after the last
};

}  // namespace tessaluna::platform
