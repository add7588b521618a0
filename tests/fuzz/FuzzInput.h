// Turns a fuzzer's bytes into the values that a test needs. After the end there are zeros.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>

namespace fuzz {

class FuzzInput {
 public:
  explicit FuzzInput(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

  bool isAtEnd() const { return rest_.empty(); }

  std::uint8_t byte() {
    if (rest_.empty()) return 0;
    const std::uint8_t first = rest_.front();
    rest_ = rest_.subspan(1);
    return first;
  }
  unsigned below(unsigned bound) { return byte() % bound; }
  bool flag() { return byte() & 1; }

  // Usually a number that a drawing would have; otherwise one that no artist intends, or any eight bytes as a number.
  double number() {
    constexpr double strange[] = {std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity(),
                                  -std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::max(),
                                  -std::numeric_limits<double>::max(),
                                  std::numeric_limits<double>::min(),
                                  std::numeric_limits<double>::denorm_min(),
                                  -std::numeric_limits<double>::denorm_min(),
                                  std::numeric_limits<double>::epsilon(),
                                  1e308,
                                  1e100,
                                  -1e100,
                                  1e38,
                                  1e30,
                                  -1e30,
                                  1e19,
                                  2147483648.0,
                                  -2147483649.0,
                                  1e9,
                                  1e6,
                                  1e-6,
                                  1e-30,
                                  1e-300,
                                  -0.0,
                                  0.0,
                                  1.0,
                                  0.5,
                                  -1.0};
    const std::uint8_t kind = byte();
    if (kind < 160) return kind / 2.0 - 8;                     // -8 ... 71.5 by halves
    if (kind < 224) return (kind - 160) + byte() / 256.0 - 1;  // between pixels
    if (kind < 252) return strange[kind - 224];
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) bits = bits << 8 | byte();
    double any = 0;
    std::memcpy(&any, &bits, sizeof any);
    return any;
  }

 private:
  std::span<const std::uint8_t> rest_;
};

}  // namespace fuzz
