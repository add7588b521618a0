#include "tessaluna/platform/foundation/NSDictionary.h"

#include <algorithm>

namespace tessaluna::platform {

const ClassInfo NSDictionary::staticClassInfo{.name = "NSDictionary", .base = &NSObject::staticClassInfo};
const ClassInfo NSMutableDictionary::staticClassInfo{.name = "NSMutableDictionary", .base = &NSDictionary::staticClassInfo};

NSDictionary::NSDictionary(Entries entries) : entries_(std::move(entries)) {
  for (const auto& [key, object] : entries_)
    if (!object) stopProgram("NSDictionary: no object for the key \"" + key + "\"");
}

Ref<NSObject> NSDictionary::objectForKey(std::string_view key) const {
  const auto found = entries_.find(key);
  return found == entries_.end() ? nullptr : found->second;
}

std::vector<std::string> NSDictionary::allKeys() const {
  std::vector<std::string> keys;
  for (const auto& entry : entries_) keys.push_back(entry.first);
  return keys;
}

Ref<NSMutableDictionary> NSDictionary::mutableCopy() const { return make<NSMutableDictionary>(entries_); }

bool NSDictionary::isEqual(const NSObject* other) const {
  const auto* dictionary = dynamic_cast<const NSDictionary*>(other);
  return dictionary && std::equal(entries_.begin(), entries_.end(), dictionary->entries_.begin(), dictionary->entries_.end(),
                                  [](const auto& mine, const auto& its) {
                                    return mine.first == its.first && mine.second->isEqual(its.second.get());
                                  });
}

void NSMutableDictionary::setObjectForKey(Ref<NSObject> object, std::string_view key) {
  if (!object) stopProgram("NSMutableDictionary: no object for the key \"" + std::string(key) + "\"");
  entries_.insert_or_assign(std::string(key), std::move(object));
}

void NSMutableDictionary::removeObjectForKey(std::string_view key) {
  if (const auto found = entries_.find(key); found != entries_.end()) entries_.erase(found);
}

}  // namespace tessaluna::platform
