// The ways in which one object refers to another, or to a value that it needs.
//   Ref       keeps it alive; may be null
//   WeakRef   does not; lock() is null once it was destroyed
//   Unowned   does not; using it after the object was destroyed stops the program
//   Required  a member that is absent at first and must be set before it is used; any type
//   Uncopied  a member that a copy of its owner starts without; any type
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::platform {

template <class T>
using Ref = std::shared_ptr<T>;

template <class T>
using WeakRef = std::weak_ptr<T>;

template <class T>
class Unowned {
 public:
  explicit Unowned(const Ref<T>& object) : object_(object) {}

  // Held by the caller for as long as it works with the object.
  Ref<T> get() const {
    if (Ref<T> object = object_.lock()) return object;
    stopProgram("an unowned reference was used after its object had gone");
  }
  Ref<T> operator->() const { return get(); }

 private:
  WeakRef<T> object_;
};

template <class T>
struct Uncopied {
  Uncopied() = default;
  Uncopied(const Uncopied&) {}
  Uncopied& operator=(const Uncopied&) = delete;

  T value{};
};

// Holds an optional T, or for a Ref<T> the reference itself. Testing it and passing it on as absent is free; only an
// unguarded use while absent stops the program, with the member's name.
template <class T>
class Required {
 public:
  explicit constexpr Required(std::string_view member) : member_(member) {}

  Required& operator=(T value) {
    value_ = std::move(value);
    return *this;
  }
  void reset() { value_.reset(); }

  explicit operator bool() const { return value_.has_value(); }
  const std::optional<T>& optional() const { return value_; }

  const T& operator*() const { return get(); }
  const T* operator->() const { return &get(); }

 private:
  const T& get() const {
    if (!value_) stopProgram("used while absent: " + std::string(member_));
    return *value_;
  }

  std::string_view member_;
  std::optional<T> value_;
};

template <class T>
class Required<Ref<T>> {
 public:
  explicit constexpr Required(std::string_view member) : member_(member) {}

  Required& operator=(Ref<T> object) {
    object_ = std::move(object);
    return *this;
  }
  void reset() { object_.reset(); }

  explicit operator bool() const { return object_ != nullptr; }
  const Ref<T>& optional() const { return object_; }

  T& operator*() const { return get(); }
  T* operator->() const { return &get(); }

 private:
  T& get() const {
    if (!object_) stopProgram("used while absent: " + std::string(member_));
    return *object_;
  }

  std::string_view member_;
  Ref<T> object_;
};

}  // namespace tessaluna::platform
