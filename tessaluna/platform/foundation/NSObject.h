// The root of all classes with identity, and make, the only way to make one.
//
// A class states its name, its base and its selectors once, in a constant ClassInfo. Actions, commands and interface
// files name an operation by its selector ("toggleDisclosure:") and find it there.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "tessaluna/platform/foundation/Forward.h"
#include "tessaluna/platform/foundation/Reference.h"

namespace tessaluna::platform {

class NSObject;

// An operation that can be reached by name. It takes the sender, which may be absent.
struct Selector {
  std::string_view name;
  void (*perform)(NSObject& receiver, NSObject* sender) = nullptr;
};

// A member that an interface file connects to another of its objects; memberTables.h makes one from a setter. False, and
// nothing done, for an object of a class that the member cannot hold.
struct Outlet {
  std::string_view name;
  bool (*connect)(NSObject& owner, const Ref<NSObject>& object) = nullptr;
};

// A member that an interface file sets to a plain value. False, and nothing done, for a value of another kind.
struct Property {
  std::string_view name;
  bool (*set)(NSObject& owner, const NSCoder& values) = nullptr;  // the value is below the property's name
};

// What may be inside an object of an interface file: one object below the key, or an array of them.
struct InnerObjects {
  std::string_view key;
  enum class Count { One, Many } count = Count::One;
  // Takes an object in. False, and nothing done, for one of a class that cannot be there.
  bool (*put)(NSObject& outer, const Ref<NSObject>& inner) = nullptr;
  // For an object that the outer one makes itself, from the same archive: that object. `put` is not called then.
  Ref<NSObject> (*made)(NSObject& outer) = nullptr;
};

struct ClassInfo {
  std::string_view name;  // with its module for classes of the library: "TessalunaUIKit.BorderedView"
  const ClassInfo* base = nullptr;
  std::span<const Selector> selectors = {};
  std::span<const Outlet> outlets = {};
  std::span<const Property> properties = {};
  std::span<const InnerObjects> innerObjects = {};
};

// The entry of the name in a table of the class or, if it has none, of the nearest base that has one; null without one.
template <class Entry>
const Entry* findMember(const ClassInfo* info, std::span<const Entry> ClassInfo::*table, auto Entry::*key,
                        std::string_view name) {
  for (; info; info = info->base)
    for (const Entry& entry : info->*table)
      if (entry.*key == name) return &entry;
  return nullptr;
}

class NSObject : public std::enable_shared_from_this<NSObject> {
 public:
  static const ClassInfo staticClassInfo;

  NSObject() = default;
  explicit NSObject(NSCoder&) {}
  virtual ~NSObject() = default;
  NSObject(const NSObject&) = delete;
  NSObject& operator=(const NSObject&) = delete;

  virtual const ClassInfo& classInfo() const { return staticClassInfo; }
  std::string className() const { return std::string(classInfo().name); }

  // Identity, unless a class says otherwise.
  virtual bool isEqual(const NSObject* other) const { return this == other; }

  bool respondsToSelector(std::string_view selector) const;
  // False, and nothing done, if neither the class nor a base of it has the selector.
  bool performSelector(std::string_view selector, NSObject* sender);

  // What needs a Ref to the object itself. Called by make, once; an override calls its base's first.
  virtual void didInit() {}

  // Called on all objects of an interface file, and on its owner, once all outlets are connected.
  virtual void awakeFromNib() {}
};

// Two null values count as equal.
inline bool areEqual(const NSObject* a, const NSObject* b) { return a ? a->isEqual(b) : b == nullptr; }

// Makes a T from the arguments of one of its constructors. With a coder that failed meanwhile the result is empty.
template <class T, class... Arguments>
Ref<T> make(Arguments&&... arguments) {
  Ref<T> object = std::make_shared<T>(std::forward<Arguments>(arguments)...);
  [[maybe_unused]] const auto coderFailed = [](const auto& argument) {
    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(argument)>, NSCoder>) return argument.failed();
    return false;
  };
  if ((coderFailed(arguments) || ...)) return nullptr;
  object->didInit();
  return object;
}

// A reference to an object that already lives in one, such as *this.
template <class T>
Ref<T> refTo(T& object) {
  return std::static_pointer_cast<T>(object.shared_from_this());
}

// The table entry of a member function that takes the sender: action<&MyView::toggle>("toggle:").
template <auto Operation>
constexpr Selector action(std::string_view name) {
  return {name, [](NSObject& receiver, NSObject* sender) {
            []<class T>(void (T::*operation)(NSObject*), NSObject& object, NSObject* from) {
              (static_cast<T&>(object).*operation)(from);
            }(Operation, receiver, sender);
          }};
}

}  // namespace tessaluna::platform
