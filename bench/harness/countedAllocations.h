// Counts the blocks of memory that this thread asks for, by whatever way: the programs that link this have malloc and
// its kin replaced, which operator new calls as well.
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
