#include "tessaluna/platform/interface_files/NSNib.h"

#include <algorithm>
#include <map>
#include <utility>

#include "tessaluna/platform/interface_files/NibChecked.h"
#include "tessaluna/platform/interface_files/classRegistry.h"

namespace tessaluna::platform {

const ClassInfo NSNib::staticClassInfo{.name = "NSNib", .base = &NSObject::staticClassInfo};

namespace {

// A document nested deeper than any interface would exhaust the stack.
constexpr int deepestNesting = 100;
constexpr std::string_view ownerId = "owner";

// The keys of every object that the loader reads itself.
constexpr std::string_view loaderKeys[] = {"id", "class", "outlets", "properties"};

class Loader {
 public:
  // With the questions forgotten nobody looks for unknown keys and misfits.
  Loader(const Ref<NSObject>& owner, NSCoder::Questions questions) : owner_(owner), questions_(questions) {}

  NSNib::Contents load(const NSCoder& source) {
    NSCoder document = source.copy(questions_);
    NSNib::Contents contents;
    const auto objects = document.decodeCodersForKey("objects");
    if (!objects) return {.topLevelObjects = {}, .error = "\"objects\" is not an array of objects"};
    document.overlookKeys({"owner"});
    if (const auto key = document.firstUnknownKey()) fail("the document has an unknown key \"" + *key + "\"");
    for (const NSCoder& object : *objects)
      if (Ref<NSObject> made = makeObject(object, 0)) contents.topLevelObjects.push_back(std::move(made));
    if (const std::optional<NSCoder> outlets = objectBelow(document, "owner", "the document")) {
      if (owner_) connectOutlets(*owner_, *outlets, "the owner");
      else fail("the document has outlets of an owner, but there is no owner");
    }
    for (const Made& made : made_)
      if (made.outlets) connectOutlets(*made.object, *made.outlets, made.place);
    for (const Made& made : made_)
      if (const auto* checked = dynamic_cast<const NibChecked*>(made.object.get()))
        if (const auto problem = checked->nibProblem()) fail(made.place + ": " + *problem);
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
    std::string place;  // how an error names it
  };

  void fail(std::string reason) {
    if (!error_) error_ = std::move(reason);
  }

  // Absent without the key; anything but an object there is an error.
  std::optional<NSCoder> objectBelow(const NSCoder& coder, std::string_view key, const std::string& place) {
    std::optional<NSCoder> result = coder.decodeCoderForKey(key);
    if (!result && coder.containsValueForKey(key)) fail('"' + std::string(key) + "\" of " + place + " is not an object");
    return result;
  }

  // How an error names the next object.
  std::string placeOf(const NSCoder& source) {
    const std::string id = source.decodeStringForKey("id").value_or("");
    if (!id.empty()) return "\"" + id + "\"";
    const std::optional<std::string> className = source.decodeStringForKey("class");
    return "object " + std::to_string(made_.size() + 1) + (className ? " (" + *className + ")" : "");
  }

  Ref<NSObject> makeObject(const NSCoder& source, int depth) {
    if (error_) return nullptr;
    const std::string place = placeOf(source);
    const std::string className = source.decodeStringForKey("class").value_or("");
    if (className.empty()) return fail(place + " has no class"), nullptr;
    NSCoder coder = source.copy(questions_);
    const Ref<NSObject> object = makeObjectOfClass(className, coder);
    if (!object) return fail(place + ": " + coder.failure().value_or("could not be made")), nullptr;
    return finishObject(object, coder, place, depth) ? object : nullptr;
  }

  // What is said of an object that was just made from the coder, besides what its class has read. False after an error.
  bool finishObject(const Ref<NSObject>& object, NSCoder& coder, const std::string& place, int depth) {
    if (depth > deepestNesting) fail(place + " is nested too deeply");
    const std::string id = coder.decodeStringForKey("id").value_or("");
    if (!id.empty() && (id == ownerId || !byId_.emplace(id, object).second)) fail("the id \"" + id + "\" is used twice");
    if (error_) return false;
    made_.push_back({object, objectBelow(coder, "outlets", place), place});
    setProperties(*object, coder, place);
    if (questions_ == NSCoder::Questions::Remembered) checkKeys(object->classInfo(), coder, place);
    addInnerObjects(object, coder, place, depth);
    return !error_;
  }

  void checkKeys(const ClassInfo& info, NSCoder& coder, const std::string& place) {
    if (const auto key = coder.firstMisfitKey()) fail("\"" + *key + "\" of " + place + " has a value of the wrong type");
    const std::vector<std::string> keys = coder.allKeys();
    for (const std::string& key : keys) {
      const bool isOurs = std::find(std::begin(loaderKeys), std::end(loaderKeys), key) != std::end(loaderKeys);
      if (isOurs || findMember(&info, &ClassInfo::innerObjects, &InnerObjects::key, key)) coder.overlookKeys({key});
    }
    if (const auto key = coder.firstUnknownKey()) fail(place + " has an unknown key \"" + *key + "\"");
  }

  void setProperties(NSObject& object, const NSCoder& source, const std::string& place) {
    const std::optional<NSCoder> properties = objectBelow(source, "properties", place);
    if (!properties) return;
    const auto propertyOf = [&object](std::string_view name) {
      return findMember(&object.classInfo(), &ClassInfo::properties, &Property::name, name);
    };
    const std::vector<std::string> names = properties->allKeys();
    for (const std::string& name : names)
      if (!propertyOf(name)) fail(place + " has no property \"" + name + "\"");
    // In the order of the tables, the object's own class first: a derived class has the limits of a value that its base has.
    for (const ClassInfo* info = &object.classInfo(); info; info = info->base)
      for (const Property& property : info->properties) {
        const bool isNamed = std::find(names.begin(), names.end(), property.name) != names.end();
        if (isNamed && propertyOf(property.name) == &property && !property.set(object, *properties))
          fail("the property \"" + std::string(property.name) + "\" of " + place + " has a value of the wrong type");
      }
  }

  void addInnerObjects(const Ref<NSObject>& object, const NSCoder& source, const std::string& place, int depth) {
    for (const std::string& key : source.allKeys()) {
      const InnerObjects* entry = findMember(&object->classInfo(), &ClassInfo::innerObjects, &InnerObjects::key, key);
      if (error_) return;
      if (!entry) continue;
      if (entry->count == InnerObjects::Count::One) {
        std::optional<NSCoder> inner = objectBelow(source, key, place);
        if (inner) addInnerObject(*entry, object, *inner, place, depth);
      } else if (auto inner = source.decodeCodersForKey(key)) {
        for (NSCoder& one : *inner) addInnerObject(*entry, object, one, place, depth);
      } else {
        fail("\"" + key + "\" of " + place + " is not an array of objects");
      }
    }
  }

  void addInnerObject(const InnerObjects& entry, const Ref<NSObject>& outer, NSCoder& source, const std::string& place,
                      int depth) {
    if (entry.made) {
      // It was read by the outer object's class, and the coder knows what it was asked.
      const Ref<NSObject> inner = entry.made(*outer);
      if (inner) finishObject(inner, source, "the " + std::string(entry.key) + " of " + place, depth + 1);
    } else if (const Ref<NSObject> inner = makeObject(source, depth + 1); inner && !entry.put(*outer, inner)) {
      fail(inner->className() + " cannot be in \"" + std::string(entry.key) + "\" of " + place);
    }
  }

  void connectOutlets(NSObject& object, const NSCoder& outlets, const std::string& place) {
    for (const std::string& name : outlets.allKeys()) {
      if (error_) return;
      const Outlet* outlet = findMember(&object.classInfo(), &ClassInfo::outlets, &Outlet::name, name);
      const std::optional<std::string> id = outlets.decodeStringForKey(name);
      const auto found = byId_.find(id.value_or(""));
      const Ref<NSObject> other = id == ownerId ? owner_ : found == byId_.end() ? nullptr : found->second;
      if (!outlet) fail(place + " has no outlet \"" + name + "\"");
      else if (!other) fail("the outlet \"" + name + "\" of " + place + " refers to an unknown object");
      else if (!outlet->connect(object, other))
        fail("the outlet \"" + name + "\" of " + place + " cannot refer to a " + other->className());
    }
  }

  Ref<NSObject> owner_;
  NSCoder::Questions questions_;
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
  if (document_ && document_->failed()) return {.topLevelObjects = {}, .error = document_->failure()};
  if (document_) {
    Contents contents =
        Loader(owner, isChecked_ ? NSCoder::Questions::Forgotten : NSCoder::Questions::Remembered).load(*document_);
    isChecked_ = isChecked_ || !contents.error;
    return contents;
  }
  if (!owner) return {.topLevelObjects = {}, .error = "a factory needs an owner"};
  Contents contents;
  if (Ref<NSObject> top = factory_(*owner)) contents.topLevelObjects.push_back(std::move(top));
  owner->awakeFromNib();
  return contents;
}

}  // namespace tessaluna::platform
