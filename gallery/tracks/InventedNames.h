// Invented titles and people, made from a seed and the same at every start.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace gallery {

class InventedNames {
 public:
  explicit InventedNames(std::uint32_t seed) : engine_(seed) {}

  std::string title();
  std::string person();
  std::string ensemble();  // a person and others

  // The engine's numbers are the same everywhere; those of a standard distribution are not.
  std::size_t below(std::size_t count) { return engine_() % count; }

 private:
  template <class Array>
  std::string pick(const Array& words) {
    return std::string(words[below(words.size())]);
  }

  std::mt19937 engine_;
};

}  // namespace gallery
