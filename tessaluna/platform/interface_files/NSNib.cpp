#include "tessaluna/platform/interface_files/NSNib.h"

#include <map>
#include <utility>

#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const ClassInfo NSNib::staticClassInfo{.name = "NSNib", .base = &NSObject::staticClassInfo};

namespace {

// A document nested deeper than any interface would exhaust the stack.
constexpr int deepestNesting = 100;
constexpr std::string_view ownerId = "owner";

template <class Entry>
const Entry* findMember(const ClassInfo* info, std::span<const Entry> ClassInfo::*table, std::string_view name) {
  for (; info; info = info->base)
    for (const Entry& entry : info->*table)
      if (entry.name == name) return &entry;
  return nullptr;
}

class Loader {
 public:
  explicit Loader(const Ref<NSObject>& owner) : owner_(owner) {}

  NSNib::Contents load(const NSCoder& document) {
    NSNib::Contents contents;
    contents.error = document.failure();
    if (contents.error) return contents;
    const auto objects = document.decodeCodersForKey("objects");
    if (!objects) return {.topLevelObjects = {}, .error = "\"objects\" is no array of objects"};
    for (const NSCoder& object : *objects)
      if (Ref<NSObject> made = makeObject(object, 0)) contents.topLevelObjects.push_back(std::move(made));
    if (const std::optional<NSCoder> outlets = objectBelow(document, "owner", "the document")) {
      if (owner_) connectOutlets(*owner_, *outlets, "the owner");
      else fail("there are outlets of an owner, but no owner");
    }
    for (const Made& made : made_)
      if (made.outlets) connectOutlets(*made.object, *made.outlets, made.place);
    contents.error = error_;
    if (error_) {
      contents.topLevelObjects.clear();
      return contents;
    }
    for (const Made& made : made_) made.object->awakeFromNib();
    if (owner_) owner_->awakeFromNib();
    return contents;
  }

 private:
  struct Made {
    Ref<NSObject> object;
    std::optional<NSCoder> outlets;
    std::string place;  // how an error calls it
  };

  void fail(std::string reason) {
    if (!error_) error_ = std::move(reason);
  }

  // Absent without the key; anything but an object there is an error.
  std::optional<NSCoder> objectBelow(const NSCoder& coder, std::string_view key, const std::string& place) {
    std::optional<NSCoder> result = coder.decodeCoderForKey(key);
    if (!result && coder.containsValueForKey(key)) fail("\"" + std::string(key) + "\" of " + place + " is no object");
    return result;
  }

  Ref<NSObject> makeObject(const NSCoder& source, int depth) {
    if (error_) return nullptr;
    const std::string id = source.decodeStringForKey("id").value_or("");
    const std::string className = source.decodeStringForKey("class").value_or("");
    const std::string place =
        id.empty() ? "the " + className + " that is number " + std::to_string(made_.size() + 1) : "\"" + id + "\"";
    if (depth > deepestNesting) return fail(place + " is nested too deep"), nullptr;
    if (className.empty()) return fail("object number " + std::to_string(made_.size() + 1) + " has no class"), nullptr;
    NSCoder coder = source.copy();
    const Ref<NSObject> object = makeObjectOfClass(className, coder);
    if (!object) return fail(place + ": " + coder.failure().value_or("could not be made")), nullptr;
    if (!id.empty() && (id == ownerId || !byId_.emplace(id, object).second))
      return fail("the id \"" + id + "\" is given twice"), nullptr;
    made_.push_back({object, objectBelow(source, "outlets", place), place});
    setProperties(*object, source, place);
    addInner(object, source, place, depth);
    return object;
  }

  void setProperties(NSObject& object, const NSCoder& source, const std::string& place) {
    const std::optional<NSCoder> properties = objectBelow(source, "properties", place);
    if (!properties) return;
    for (const std::string& name : properties->allKeys()) {
      const Property* property = findMember(&object.classInfo(), &ClassInfo::properties, name);
      if (!property) fail(place + " has no property \"" + name + "\"");
      else if (!property->set(object, *properties))
        fail("the property \"" + name + "\" of " + place + " has a value of another kind");
    }
  }

  Ref<NSView> makeView(const NSCoder& source, int depth) {
    const Ref<NSObject> object = makeObject(source, depth);
    auto view = std::dynamic_pointer_cast<NSView>(object);
    if (object && !view) fail(object->className() + " is no view and cannot stand in one");
    return view;
  }

  void addInner(const Ref<NSObject>& object, const NSCoder& source, const std::string& place, int depth) {
    if (source.containsValueForKey("subviews")) {
      const auto view = std::dynamic_pointer_cast<NSView>(object);
      const auto subviews = source.decodeCodersForKey("subviews");
      if (!view) return fail(place + " is no view and has subviews");
      if (!subviews) return fail("\"subviews\" of " + place + " is no array of objects");
      for (const NSCoder& inner : *subviews)
        if (const Ref<NSView> subview = makeView(inner, depth + 1)) view->addSubview(subview);
    }
    if (const std::optional<NSCoder> inner = objectBelow(source, "contentView", place)) {
      const auto window = std::dynamic_pointer_cast<NSWindow>(object);
      if (!window) return fail(place + " is no window and has a content view");
      if (const Ref<NSView> view = makeView(*inner, depth + 1)) window->setContentView(view);
    }
    if (const std::optional<NSCoder> inner = objectBelow(source, "documentView", place)) {
      const auto scrollView = std::dynamic_pointer_cast<NSScrollView>(object);
      if (!scrollView) return fail(place + " is no scroll view and has a document view");
      if (const Ref<NSView> view = makeView(*inner, depth + 1)) scrollView->setDocumentView(view);
    }
  }

  void connectOutlets(NSObject& object, const NSCoder& outlets, const std::string& place) {
    for (const std::string& name : outlets.allKeys()) {
      if (error_) return;
      const Outlet* outlet = findMember(&object.classInfo(), &ClassInfo::outlets, name);
      const std::optional<std::string> id = outlets.decodeStringForKey(name);
      const auto found = byId_.find(id.value_or(""));
      const Ref<NSObject> other = id == ownerId ? owner_ : found == byId_.end() ? nullptr : found->second;
      if (!outlet) fail(place + " has no outlet \"" + name + "\"");
      else if (!other) fail("the outlet \"" + name + "\" of " + place + " names no object of the document");
      else if (!outlet->connect(object, other))
        fail("the outlet \"" + name + "\" of " + place + " cannot hold a " + other->className());
    }
  }

  Ref<NSObject> owner_;
  std::vector<Made> made_;
  std::map<std::string, Ref<NSObject>, std::less<>> byId_;
  std::optional<std::string> error_;
};

using NamedNibs = std::map<std::string, Ref<NSNib>, std::less<>>;

NamedNibs& namedNibs() {
  static NamedNibs nibs;
  return nibs;
}

}  // namespace

NSNib::NSNib(std::string_view json) : document_(NSCoder(json)) {}
NSNib::NSNib(Factory factory) : factory_(std::move(factory)) {}

void NSNib::registerDocument(std::string name, std::string_view json) {
  namedNibs().insert_or_assign(std::move(name), make<NSNib>(json));
}

void NSNib::registerFactory(std::string name, Factory factory) {
  namedNibs().insert_or_assign(std::move(name), make<NSNib>(std::move(factory)));
}

Ref<NSNib> NSNib::nibNamed(std::string_view name) {
  const auto found = namedNibs().find(name);
  return found == namedNibs().end() ? nullptr : found->second;
}

NSNib::Contents NSNib::instantiateWithOwner(const Ref<NSObject>& owner) const {
  if (document_) return Loader(owner).load(*document_);
  if (!owner) return {.topLevelObjects = {}, .error = "a factory needs an owner"};
  Contents contents;
  if (Ref<NSObject> top = factory_(*owner)) contents.topLevelObjects.push_back(std::move(top));
  owner->awakeFromNib();
  return contents;
}

}  // namespace tessaluna::platform
