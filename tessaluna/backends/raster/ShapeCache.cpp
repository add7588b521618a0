#include "tessaluna/backends/raster/ShapeCache.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <utility>

namespace tessaluna::backend::raster {

namespace {

// Moves are rounded to these parts of a pixel: a smaller move does not change coverage, and sums of coordinates round by
// less.
constexpr double partsOfPixel = 1 << 20;
constexpr double farthestMove = 1e8;  // so that sums of whole pixels stay within an int

// Adds two words at a time by mixing both halves of their product with odd constants.
class Mixer {
 public:
  void add(std::uint64_t a, std::uint64_t b) {
    a ^= value_;
    b ^= 0x9e3779b97f4a7c15u;
#ifdef __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    const auto product = static_cast<Wide>(a) * b;
    value_ = static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
#else
    // Processors of 32 bits have no such product. This one has the low half, and most of the high one.
    value_ = (a * b) ^ ((a >> 32) * (b >> 32));
#endif
  }
  void add(double a, double b) { add(bits(a), bits(b)); }
  // Adds two points at a time, crosswise, to be fast: each point of every drawing passes through here.
  void add(std::span<const CGPoint> points) {
    const CGPoint* p = points.data();
    for (std::size_t pairs = points.size() / 2; pairs > 0; --pairs, p += 2) {
      add(bits(p[0].x) ^ std::rotl(bits(p[1].y), 29), bits(p[0].y) ^ std::rotl(bits(p[1].x), 29));
    }
    if (points.size() % 2 == 1) add(p->x, p->y);
  }
  std::uint64_t value() const { return value_ ? value_ : 1; }

 private:
  static std::uint64_t bits(double v) { return std::bit_cast<std::uint64_t>(v); }
  std::uint64_t value_ = 0x2545f4914f6cdd1du;
};

template <class Kept, class Given>
bool areSame(const Kept& kept, const Given& given) {
  return kept.size() == given.size() &&
         (kept.empty() || std::memcmp(kept.data(), given.data(), kept.size() * sizeof(*kept.data())) == 0);
}

}  // namespace

bool PixelPlacement::isPossible(const CGAffineTransform& t) {
  return std::abs(t.tx) < farthestMove && std::abs(t.ty) < farthestMove;
}

PixelPlacement::PixelPlacement(const CGAffineTransform& transform) : rest(transform) {
  const auto part = [](double& move, int& pixels) {
    const double rounded = move + 0.5 / partsOfPixel;
    pixels = int(std::floor(rounded));
    move = int((rounded - pixels) * partsOfPixel) * (1 / partsOfPixel);
  };
  part(rest.tx, moved.x);
  part(rest.ty, moved.y);
}

ShapeCache::Key::Key(const Path& path, FillRule rule, const StrokeStyle* pen, const CGAffineTransform& t)
    : path_(path), numbers_{t.a, t.b, t.c, t.d, t.tx, t.ty} {
  Mixer mixer;
  mixer.add(t.a, t.b);
  mixer.add(t.c, t.d);
  mixer.add(t.tx, t.ty);
  numbers_[6] = int(rule);
  if (pen) {
    numbers_[6] = 2 + int(pen->cap) * 4 + int(pen->join) * 16;
    numbers_[7] = pen->width;
    numbers_[8] = pen->miterLimit;
    numbers_[9] = pen->dashPhase;
    mixer.add(numbers_[6], numbers_[7]);
    mixer.add(numbers_[8], numbers_[9]);
    dash_ = pen->dash;
    for (const double length : dash_) mixer.add(length, 0.0);
  }
  mixer.add(path.points());
  // Of the verbs only their number is added: paths with the same points and different verbs are too rare to look at each
  // verb.
  mixer.add(path.verbs().size() * 4 + std::uint64_t(rule), path.points().size());
  hash_ = mixer.value();
}

ShapeCache::Entry::Entry(const Key& key, const KeptShape& kept)
    : shape(kept),
      points(key.path_.points().begin(), key.path_.points().end()),
      verbs(key.path_.verbs().begin(), key.path_.verbs().end()),
      dash(key.dash_.begin(), key.dash_.end()),
      numbers(key.numbers_),
      bytes(sizeof(Entry) + kept.coverage.bytes() + points.size() * sizeof(CGPoint) + verbs.size() +
            dash.size() * sizeof(double)) {}

bool ShapeCache::Entry::isOf(const Key& key) const {
  return areSame(numbers, key.numbers_) && areSame(points, key.path_.points()) && areSame(verbs, key.path_.verbs()) &&
         areSame(dash, key.dash_);
}

ShapeCache::Sight ShapeCache::look(const Key& key, const PixelRect& clip) {
  if (!slots_) slots_ = std::make_unique<Slot[]>(slotCount);
  ++now_;
  // Each operation checks one slot, so that none has to check them all.
  Slot& checked = slots_[hand_++ % slotCount];
  if (checked.entry && isOld(checked)) {
    bytes_ -= checked.entry->bytes;
    checked = {};
  }

  Slot* const set = setOf(key.hash());
  Slot* least = nullptr;  // of the slots without an entry, the one that was used longest ago
  for (Slot* slot = set; slot < set + slotsOfSet; ++slot) {
    if (slot->hash == key.hash()) return lookAt(*slot, key, clip);
    if (!slot->entry && (!least || now_ - slot->lastUsed > now_ - least->lastUsed)) least = slot;
  }
  if (least) {
    least->hash = key.hash();
    least->lastUsed = now_;
    least->isTooLarge = false;
  }
  return {};
}

ShapeCache::Sight ShapeCache::lookAt(Slot& slot, const Key& key, const PixelRect& clip) {
  slot.lastUsed = now_;
  const bool hasRoom = !slot.isTooLarge && bytes_ < maxBytes - maxBytesOfShape;
  if (!slot.entry) return {.isSecond = hasRoom};
  Entry& entry = *slot.entry;
  if (!entry.isOf(key)) return {};
  if (entry.shape.fits(clip)) return {.kept = &entry.shape};
  return {.isSecond = hasRoom && std::exchange(entry.otherClip, clip) == clip};
}

void ShapeCache::keep(const Key& key, const KeptShape& shape) {
  Slot* slot = setOf(key.hash());
  while (slot->hash != key.hash()) ++slot;
  if (slot->entry) bytes_ -= slot->entry->bytes;
  slot->entry = std::make_unique<Entry>(key, shape);
  slot->isTooLarge = slot->entry->bytes > maxBytesOfShape;
  if (slot->isTooLarge) slot->entry.reset();
  else bytes_ += slot->entry->bytes;
}

}  // namespace tessaluna::backend::raster
