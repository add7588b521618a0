// What countingNew.h counts, for the other sources of a program that includes that header.
#pragma once

namespace harness {

inline thread_local int allocations = 0;
inline thread_local long allocationsAlive = 0;  // right if no thread frees what another one has allocated

}  // namespace harness
