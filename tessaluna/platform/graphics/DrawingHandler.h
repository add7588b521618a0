// What an image runs each time it is rendered: a callable that is kept inside the image itself, so that making an image
// takes no second allocation. Copyable state of up to 64 bytes; it may run on any thread and must only touch its own copies.
#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

class DrawingHandler {
 public:
  DrawingHandler() = default;

  template <class Callable>
  requires(!std::is_same_v<std::remove_cvref_t<Callable>, DrawingHandler>)
      DrawingHandler(Callable callable) {  // NOLINT(google-explicit-constructor): a lambda is passed as it is
    static_assert(sizeof(Callable) <= sizeof state_, "the state of a drawing handler is kept in the image: 64 bytes");
    static_assert(std::is_nothrow_move_constructible_v<Callable>);
    new (state_) Callable(std::move(callable));
    run_ = [](void* state, CGRect destination) -> bool { return (*static_cast<Callable*>(state))(destination); };
    destroy_ = [](void* state) { static_cast<Callable*>(state)->~Callable(); };
    move_ = [](void* from, void* to) { new (to) Callable(std::move(*static_cast<Callable*>(from))); };
  }
  DrawingHandler(DrawingHandler&& other) noexcept { take(other); }
  DrawingHandler& operator=(DrawingHandler&& other) noexcept {
    if (this != &other) {
      reset();
      take(other);
    }
    return *this;
  }
  ~DrawingHandler() { reset(); }

  explicit operator bool() const { return run_ != nullptr; }
  bool operator()(CGRect destination) { return run_(state_, destination); }

 private:
  void reset() {
    if (run_) destroy_(state_);
    run_ = nullptr;
  }
  void take(DrawingHandler& other) {
    if (!other.run_) return;
    other.move_(other.state_, state_);
    run_ = other.run_;
    destroy_ = other.destroy_;
    move_ = other.move_;
    other.reset();
  }

  alignas(std::max_align_t) std::byte state_[64];
  bool (*run_)(void*, CGRect) = nullptr;
  void (*destroy_)(void*) = nullptr;
  void (*move_)(void*, void*) = nullptr;
};

}  // namespace tessaluna::platform
