#include "tessaluna/backends/raster/upperHalves.h"

#include <gtest/gtest.h>

#include <array>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"

namespace tessaluna::backend::raster::test {

namespace {

#if defined(__x86_64__) && !defined(__AVX__)

// Not a register that a function uses before it has used the first ones.
void fillAnUpperHalf() { asm volatile("vpcmpeqd %%ymm15, %%ymm15, %%ymm15" ::: "xmm15"); }

std::array<long long, 2> thatUpperHalf() {
  std::array<long long, 2> half{};
  asm volatile("vextractf128 $1, %%ymm15, %0" : "=m"(half));
  return half;
}

bool hasUpperHalves() { return __builtin_cpu_supports("avx2"); }

TEST(UpperHalvesTest, AnOperationOfTheCanvasBeginsWithoutTheUpperHalvesThatOthersLeft) {
  if (!hasUpperHalves()) GTEST_SKIP() << "this processor has no upper halves";
  const std::array<long long, 2> empty{}, full{-1, -1};
  auto bitmap = Bitmap::make(8, 8);
  RasterCanvas canvas(*bitmap);
  const Path path = Path::oval({1, 1, 6, 6});
  fillAnUpperHalf();
  ASSERT_EQ(thatUpperHalf(), full);
  fillAnUpperHalf();
  canvas.fillPath(path, FillRule::NonZero);
  EXPECT_EQ(thatUpperHalf(), empty);
  fillAnUpperHalf();
  canvas.strokePath(path, {});
  EXPECT_EQ(thatUpperHalf(), empty);
}

#endif

}  // namespace

}  // namespace tessaluna::backend::raster::test
