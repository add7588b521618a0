// Counts the blocks of memory that this thread allocates in any way: linking this replaces malloc and similar functions,
// which operator new calls too.
#pragma once

#include <cstddef>

namespace bench {

std::size_t countedAllocations();

// How often an action allocates.
template <class Action>
std::size_t allocationsOf(Action action) {
  const std::size_t before = countedAllocations();
  action();
  return countedAllocations() - before;
}

}  // namespace bench
