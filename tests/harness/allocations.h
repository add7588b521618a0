// What countingNew.h counts, for the other sources of a program that includes it.
#pragma once

namespace harness {

inline thread_local int allocations = 0;
inline thread_local long allocationsAlive = 0;  // right where what one thread makes no other lets go

}  // namespace harness
