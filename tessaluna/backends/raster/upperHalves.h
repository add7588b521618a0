// Code for newer processors, in this program or in a library that it uses, may leave values in the upper halves of the vector
// registers. This library's code, for the base instruction set, has no use for them, but some processors keep them through
// every one of its instructions and take two to three times as long.
#pragma once

#if defined(__SSE2__) && !defined(__AVX__)
#include <immintrin.h>
#endif

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::raster {

// Nobody may rely on these halves after a call of any function.
#if defined(__SSE2__) && !defined(__AVX__)
__attribute__((target("avx"))) inline void zeroUpperHalves() { _mm256_zeroupper(); }
inline void clearUpperHalves() {
  if (__builtin_cpu_supports("avx")) zeroUpperHalves();
}
#else
inline void clearUpperHalves() {}
#endif

}  // namespace tessaluna::backend::raster
