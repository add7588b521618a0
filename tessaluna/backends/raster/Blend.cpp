#include "tessaluna/backends/raster/Blend.h"

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend::raster {

namespace {

// The result is the sum of source and destination, each multiplied by a factor that depends on the other one's alpha. The
// source is already multiplied by its coverage.
struct Operator {
  struct Factor {
    float first, perAlpha;
  };
  Factor ofSource, ofDestination;
};
constexpr Operator::Factor none{0, 0}, all{1, 0}, inside{0, 1}, outside{1, -1};

Operator operatorOf(BlendMode mode) {
  switch (mode) {
    case BlendMode::Clear: return {none, outside};
    case BlendMode::Normal:
    case BlendMode::Copy: return {all, outside};
    case BlendMode::SourceIn: return {inside, none};
    case BlendMode::SourceOut: return {outside, none};
    case BlendMode::SourceAtop: return {inside, outside};
    case BlendMode::DestinationOver: return {outside, all};
    case BlendMode::DestinationIn: return {none, inside};
    case BlendMode::DestinationOut: return {none, outside};
    case BlendMode::DestinationAtop: return {outside, inside};
    case BlendMode::Xor: return {outside, outside};
    case BlendMode::PlusLighter: return {all, all};
  }
  platform::unreachable();
}

Float4 alphaOf(Float4 v) { return __builtin_shufflevector(v, v, 3, 3, 3, 3); }

}  // namespace

void blendRow(BlendMode mode, Float4* destination, const Float4* source, const float* coverage, const float* clip,
              int count) {
  const auto [ofSource, ofDestination] = operatorOf(mode);
  const auto factor = [](const Operator::Factor& f, Float4 alpha) { return splat(f.first) + splat(f.perAlpha) * alpha; };
  const bool skipsUncovered = !isUnbounded(mode), replacesCovered = showsEmptyParts(mode);
  for (int i = 0; i < count; ++i) {
    if (skipsUncovered && coverage[i] == 0) continue;
    Float4& d = destination[i];
    const Float4 covered = splat(coverage[i]), s = source[i] * covered;
    // These two replace what is covered even by a transparent source.
    const Float4 sourceAlpha = replacesCovered ? covered : alphaOf(s);
    const Float4 result = s * factor(ofSource, alphaOf(d)) + d * factor(ofDestination, sourceAlpha);
    const Float4 most = smaller(result, splat(1));
    d = clip ? d + (most - d) * splat(clip[i]) : most;
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
