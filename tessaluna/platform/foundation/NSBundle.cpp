#include "tessaluna/platform/foundation/NSBundle.h"

#include <utility>

#include "tessaluna/platform/foundation/NSCoder.h"

namespace tessaluna::platform {

const ClassInfo NSBundle::staticClassInfo{.name = "NSBundle", .base = &NSObject::staticClassInfo};

namespace {

std::string_view nameOf(std::string_view table) { return table.empty() ? NSBundle::defaultTable : table; }

}  // namespace

const Ref<NSBundle>& NSBundle::mainBundle() {
  static const Ref<NSBundle> bundle = make<NSBundle>();
  return bundle;
}

std::string NSBundle::localizedStringForKey(std::string_view key, std::string_view value, std::string_view table) const {
  if (const auto strings = tables_.find(nameOf(table)); strings != tables_.end())
    if (const auto found = strings->second.find(key); found != strings->second.end()) return found->second;
  return std::string(value.empty() ? key : value);
}

void NSBundle::setStringTable(StringTable strings, std::string_view table) {
  tables_.insert_or_assign(std::string(nameOf(table)), std::move(strings));
}

std::optional<std::string> NSBundle::setStringTableFromJSON(std::string_view json, std::string_view table) {
  const NSCoder document(json);
  if (document.failed()) return document.failure();
  StringTable strings;
  for (const std::string& key : document.allKeys()) {
    std::optional<std::string> text = document.decodeStringForKey(key);
    if (!text) return "\"" + key + "\" is not a text";
    strings.emplace(key, std::move(*text));
  }
  setStringTable(std::move(strings), table);
  return std::nullopt;
}

}  // namespace tessaluna::platform
