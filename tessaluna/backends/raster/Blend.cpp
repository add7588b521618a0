#include "tessaluna/backends/raster/Blend.h"

#include <algorithm>
#include <cstring>

namespace tessaluna::backend::raster {

namespace {

Float4 alphaOf(Float4 v) { return __builtin_shufflevector(v, v, 3, 3, 3, 3); }

// R = f(S, D) for a source that is already multiplied by its coverage.
template <BlendMode mode>
Float4 combined(Float4 s, Float4 d) {
  const Float4 one = splat(1);
  if constexpr (mode == BlendMode::Normal) return s + d * (one - alphaOf(s));
  if constexpr (mode == BlendMode::SourceIn) return s * alphaOf(d);
  if constexpr (mode == BlendMode::SourceOut) return s * (one - alphaOf(d));
  if constexpr (mode == BlendMode::SourceAtop) return s * alphaOf(d) + d * (one - alphaOf(s));
  if constexpr (mode == BlendMode::DestinationOver) return s * (one - alphaOf(d)) + d;
  if constexpr (mode == BlendMode::DestinationIn) return d * alphaOf(s);
  if constexpr (mode == BlendMode::DestinationOut) return d * (one - alphaOf(s));
  if constexpr (mode == BlendMode::DestinationAtop) return s * (one - alphaOf(d)) + d * alphaOf(s);
  if constexpr (mode == BlendMode::Xor) return s * (one - alphaOf(d)) + d * (one - alphaOf(s));
  if constexpr (mode == BlendMode::PlusLighter) return smaller(s + d, one);
}

template <BlendMode mode>
void blend(Float4* destination, const Float4* source, const float* coverage, const float* clip, int count) {
  for (int i = 0; i < count; ++i) {
    Float4& d = destination[i];
    if constexpr (mode == BlendMode::Clear) {
      d *= splat(1 - coverage[i]);
    } else if constexpr (mode == BlendMode::Copy) {
      d += (source[i] - d) * splat(coverage[i]);
    } else if constexpr (isUnbounded(mode)) {
      const Float4 r = combined<mode>(source[i] * splat(coverage[i]), d);
      d = clip ? d + (r - d) * splat(clip[i]) : r;
    } else if (coverage[i] != 0) {
      d = combined<mode>(source[i] * splat(coverage[i]), d);
    }
  }
}

}  // namespace

void blendRow(BlendMode mode, Float4* destination, const Float4* source, const float* coverage, const float* clip,
              int count) {
  switch (mode) {
    case BlendMode::Normal: return blend<BlendMode::Normal>(destination, source, coverage, clip, count);
    case BlendMode::Clear: return blend<BlendMode::Clear>(destination, source, coverage, clip, count);
    case BlendMode::Copy: return blend<BlendMode::Copy>(destination, source, coverage, clip, count);
    case BlendMode::SourceIn: return blend<BlendMode::SourceIn>(destination, source, coverage, clip, count);
    case BlendMode::SourceOut: return blend<BlendMode::SourceOut>(destination, source, coverage, clip, count);
    case BlendMode::SourceAtop: return blend<BlendMode::SourceAtop>(destination, source, coverage, clip, count);
    case BlendMode::DestinationOver: return blend<BlendMode::DestinationOver>(destination, source, coverage, clip, count);
    case BlendMode::DestinationIn: return blend<BlendMode::DestinationIn>(destination, source, coverage, clip, count);
    case BlendMode::DestinationOut: return blend<BlendMode::DestinationOut>(destination, source, coverage, clip, count);
    case BlendMode::DestinationAtop: return blend<BlendMode::DestinationAtop>(destination, source, coverage, clip, count);
    case BlendMode::Xor: return blend<BlendMode::Xor>(destination, source, coverage, clip, count);
    case BlendMode::PlusLighter: return blend<BlendMode::PlusLighter>(destination, source, coverage, clip, count);
  }
}

void loadRow(const std::uint32_t* pixels, Float4* out, int count) {
  for (int i = 0; i < count; ++i) {
    // Each half holds two channels; the second one moves to the half's upper word.
    const Long2 halves{static_cast<long long>(pixels[i] & 0xffff), static_cast<long long>(pixels[i] >> 16)};
    const Int4 channels = reinterpret_cast<Int4>((halves | halves << 24) & 0x000000ff000000ff);
    out[i] = __builtin_convertvector(channels, Float4) * splat(1.0f / 255);
  }
}

void storeRow(const Float4* row, std::uint32_t* pixels, int count) {
  for (int i = 0; i < count; ++i) {
    const Float4 clamped = smaller(larger(row[i], splat(0)), splat(1));
    const Long2 halves = reinterpret_cast<Long2>(__builtin_convertvector(clamped * splat(255) + splat(0.5f), Int4));
    const Long2 pairs = halves | halves >> 24;
    pixels[i] = std::uint32_t(pairs[0] & 0xffff) | std::uint32_t(pairs[1] & 0xffff) << 16;
  }
}

}  // namespace tessaluna::backend::raster
