// The texts of a program in the user's language: tables from keys to texts, which the host sets in code or from a document.
// The main bundle is the program's; there is no other.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSBundle : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  static const Ref<NSBundle>& mainBundle();

  using StringTable = std::map<std::string, std::string, std::less<>>;
  static constexpr std::string_view defaultTable = "Localizable";

  // The text for the key in the table, which with an empty name is the default one. Without a translation: the value, or the
  // key if the value is empty.
  std::string localizedStringForKey(std::string_view key, std::string_view value = {}, std::string_view table = {}) const;

  // In UTF-8. Takes the place of an earlier table of the name; an empty name is the default one's.
  void setStringTable(StringTable strings, std::string_view table = {});
  // From a JSON object of texts: {"Hide": "Masquer", "Show": "Afficher"}. The error of a bad document says what is wrong and
  // where; then the earlier table stays.
  std::optional<std::string> setStringTableFromJSON(std::string_view json, std::string_view table = {});

 private:
  std::map<std::string, StringTable, std::less<>> tables_;
};

}  // namespace tessaluna::platform
