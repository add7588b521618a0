#include "tessaluna/platform/foundation/NSCoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <set>
#include <unordered_map>
#include <nlohmann/json.hpp>

namespace tessaluna::platform {

using Json = nlohmann::json;

namespace {

// What was asked for of a value; neither where only its key was.
struct Question {
  bool fits = false, fitsNot = false;
};
// By the place of the value in the tree.
using QuestionsByValue = std::unordered_map<const Json*, Question>;

// Where the text stops being JSON, as a person counts: lines and characters, from 1.
std::string placeOf(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, std::min(offset, text.size()));
  const std::size_t lineStart = before.rfind('\n') + 1;  // 0 without a line's end
  const auto isCharacter = [](char byte) { return (byte & 0xC0) != 0x80; };
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const auto column = 1 + std::count_if(before.begin() + static_cast<std::ptrdiff_t>(lineStart), before.end(), isCharacter);
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

// Reads a text for two mistakes: the place at which it stops being JSON, and a key that one object has twice, of which a parser
// would keep one value and drop the other. (A parser that has a listener of its own takes time by the square of an array's length.)
struct MistakeFinder : nlohmann::json_sax<Json> {
  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }
  bool number_unsigned(number_unsigned_t) override { return true; }
  bool number_float(number_float_t, const string_t&) override { return true; }
  bool string(string_t&) override { return true; }
  bool binary(binary_t&) override { return true; }
  bool start_object(std::size_t) override {
    keysOfOpenObjects.emplace_back();
    return true;
  }
  bool key(string_t& key) override {
    if (!keysOfOpenObjects.back().insert(key).second && !repeated) repeated = key;
    return true;
  }
  bool end_object() override {
    keysOfOpenObjects.pop_back();
    return true;
  }
  bool start_array(std::size_t) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t bytesRead, const std::string&, const nlohmann::detail::exception&) override {
    errorOffset = bytesRead == 0 ? 0 : bytesRead - 1;  // of the last one, which is wrong
    return false;
  }

  std::optional<std::size_t> errorOffset;
  std::optional<std::string> repeated;
  std::vector<std::set<std::string>> keysOfOpenObjects;
};

// The numbers of an array of N; absent for anything else.
template <std::size_t N>
std::optional<std::array<double, N>> numbersIn(const Json& array) {
  if (!array.is_array() || array.size() != N) return std::nullopt;
  std::array<double, N> result{};
  for (std::size_t i = 0; i < N; ++i) {
    if (!array[i].is_number()) return std::nullopt;
    result[i] = array[i].get<double>();
  }
  return result;
}

// The elements of an array; absent for anything else and for an array with an element of another kind.
template <class T>
std::optional<std::vector<T>> elementsIn(const Json& array, bool (Json::*isOfKind)() const noexcept) {
  const auto fits = [&](const Json& element) { return (element.*isOfKind)(); };
  if (!array.is_array() || !std::all_of(array.begin(), array.end(), fits)) return std::nullopt;
  return array.get<std::vector<T>>();
}

std::optional<std::int64_t> wholeNumberIn(const Json& value) {
  // An unsigned number beyond the signed range would wrap.
  if (value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX) return std::nullopt;
  if (value.is_number_integer()) return value.get<std::int64_t>();
  if (!value.is_number()) return std::nullopt;
  const auto number = value.get<double>();
  return number == std::trunc(number) && std::abs(number) < 0x1p63 ? std::optional(static_cast<std::int64_t>(number))
                                                                   : std::nullopt;
}

}  // namespace

// A coder of an inner object shares the text's one tree, and the questions, with the coder that it came from. Whoever writes
// gets a tree of his own first.
struct NSCoder::Archive {
  std::shared_ptr<Json> tree = std::make_shared<Json>(Json::object());
  Json* object = tree.get();
  std::shared_ptr<QuestionsByValue> questions = std::make_shared<QuestionsByValue>();  // null: they are forgotten

  const Json* find(std::string_view key) const {
    const auto found = object->find(std::string(key));
    return found == object->end() ? nullptr : &*found;
  }

  void noteQuestion(std::string_view key) const {
    if (!questions) return;
    if (const Json* value = find(key)) questions->try_emplace(value);
  }

  // What `read` makes of the value below the key, and whether it could is noted; absent without the key.
  template <class Read>
  auto ask(std::string_view key, Read read) const -> decltype(read(*object)) {
    const Json* value = find(key);
    if (!value) return std::nullopt;
    auto result = read(*value);
    if (!questions) return result;
    Question& question = (*questions)[value];
    (result ? question.fits : question.fitsNot) = true;
    return result;
  }

  Json& writable(std::string_view key) {
    if (object != tree.get() || tree.use_count() > 1) {
      tree = std::make_shared<Json>(*object);
      object = tree.get();
      if (questions) questions = std::make_shared<QuestionsByValue>();
    }
    return (*object)[std::string(key)];
  }

  std::unique_ptr<Archive> inner(const Json& value) const {
    auto archive = std::make_unique<Archive>(*this);
    archive->object = const_cast<Json*>(&value);  // read only, see writable
    return archive;
  }

  // All zero unless there is an array of that many numbers.
  template <std::size_t N>
  std::array<double, N> numbers(std::string_view key) const {
    return ask(key, numbersIn<N>).value_or(std::array<double, N>{});
  }
};

NSCoder::NSCoder() : archive_(std::make_unique<Archive>()) {}
NSCoder::NSCoder(std::unique_ptr<Archive> archive) : archive_(std::move(archive)) {}
NSCoder::~NSCoder() = default;
NSCoder::NSCoder(NSCoder&&) noexcept = default;
NSCoder& NSCoder::operator=(NSCoder&&) noexcept = default;

NSCoder::NSCoder(std::string_view json) : NSCoder() {
  MistakeFinder mistakes;
  Json::sax_parse(json, &mistakes);
  Json parsed = mistakes.errorOffset ? Json() : Json::parse(json, nullptr, /*allow_exceptions=*/false);
  if (mistakes.errorOffset) {
    fail("the archive is not JSON: " + placeOf(json, *mistakes.errorOffset));
  } else if (!parsed.is_object()) {
    fail("the archive is not a JSON object");
  } else if (mistakes.repeated) {
    fail("the archive has an object with the key \"" + *mistakes.repeated + "\" twice");
  } else {
    *archive_->object = std::move(parsed);
  }
}

NSCoder NSCoder::copy(Questions questions) const {
  auto archive = std::make_unique<Archive>(*archive_);
  archive->questions = questions == Questions::Remembered ? std::make_shared<QuestionsByValue>() : nullptr;
  return NSCoder(std::move(archive));
}

bool NSCoder::containsValueForKey(std::string_view key) const {
  archive_->noteQuestion(key);
  return archive_->find(key) != nullptr;
}

bool NSCoder::decodeBoolForKey(std::string_view key) const { return boolForKey(key).value_or(false); }

std::int64_t NSCoder::decodeIntegerForKey(std::string_view key) const {
  return archive_->ask(key, wholeNumberIn).value_or(0);
}

double NSCoder::decodeDoubleForKey(std::string_view key) const { return numberForKey(key).value_or(0); }

std::optional<std::string> NSCoder::decodeStringForKey(std::string_view key) const {
  return archive_->ask(
      key, [](const Json& value) { return value.is_string() ? std::optional(value.get<std::string>()) : std::nullopt; });
}

std::optional<std::int64_t> NSCoder::decodeNamedValueForKey(std::string_view key, std::span<const NamedValue> names) const {
  return archive_->ask(key, [&](const Json& value) -> std::optional<std::int64_t> {
    const std::optional<std::int64_t> number = wholeNumberIn(value);
    for (const NamedValue& named : names)
      if (value.is_string() ? value.get_ref<const std::string&>() == named.name : number == named.value) return named.value;
    return std::nullopt;
  });
}

std::optional<std::vector<double>> NSCoder::decodeNumbersForKey(std::string_view key) const {
  return archive_->ask(key, [](const Json& value) { return elementsIn<double>(value, &Json::is_number); });
}

std::optional<std::vector<std::string>> NSCoder::decodeStringsForKey(std::string_view key) const {
  return archive_->ask(key, [](const Json& value) { return elementsIn<std::string>(value, &Json::is_string); });
}

CGPoint NSCoder::decodePointForKey(std::string_view key) const {
  const auto [x, y] = archive_->numbers<2>(key);
  return {x, y};
}

CGSize NSCoder::decodeSizeForKey(std::string_view key) const {
  const auto [width, height] = archive_->numbers<2>(key);
  return {width, height};
}

CGRect NSCoder::decodeRectForKey(std::string_view key) const {
  const auto [x, y, width, height] = archive_->numbers<4>(key);
  return {x, y, width, height};
}

std::optional<NSCoder> NSCoder::decodeCoderForKey(std::string_view key) const {
  return archive_->ask(key, [&](const Json& value) {
    return value.is_object() ? std::optional(NSCoder(archive_->inner(value))) : std::nullopt;
  });
}

std::optional<std::vector<NSCoder>> NSCoder::decodeCodersForKey(std::string_view key) const {
  return archive_->ask(key, [&](const Json& value) -> std::optional<std::vector<NSCoder>> {
    if (!value.is_array()) return std::nullopt;
    std::vector<NSCoder> result;
    for (const Json& element : value) {
      if (!element.is_object()) return std::nullopt;
      result.push_back(NSCoder(archive_->inner(element)));
    }
    return result;
  });
}

std::optional<bool> NSCoder::boolForKey(std::string_view key) const {
  return archive_->ask(
      key, [](const Json& value) { return value.is_boolean() ? std::optional(value.get<bool>()) : std::nullopt; });
}

std::optional<double> NSCoder::numberForKey(std::string_view key) const {
  return archive_->ask(
      key, [](const Json& value) { return value.is_number() ? std::optional(value.get<double>()) : std::nullopt; });
}

std::vector<std::string> NSCoder::allKeys() const {
  std::vector<std::string> result;
  for (const auto& [key, value] : archive_->object->items()) result.push_back(key);
  return result;
}

void NSCoder::overlookKeys(std::initializer_list<std::string_view> keys) {
  for (const std::string_view key : keys) archive_->noteQuestion(key);
}

std::optional<std::string> NSCoder::firstUnknownKey() const {
  if (!archive_->questions) return std::nullopt;
  for (const auto& [key, value] : archive_->object->items())
    if (!archive_->questions->contains(&value)) return key;
  return std::nullopt;
}

std::optional<std::string> NSCoder::firstMisfitKey() const {
  if (!archive_->questions) return std::nullopt;
  for (const auto& [key, value] : archive_->object->items()) {
    const auto asked = archive_->questions->find(&value);
    if (asked != archive_->questions->end() && asked->second.fitsNot && !asked->second.fits) return key;
  }
  return std::nullopt;
}

NSCoder& NSCoder::encode(bool value, std::string_view key) {
  archive_->writable(key) = value;
  return *this;
}

NSCoder& NSCoder::encode(std::int64_t value, std::string_view key) {
  archive_->writable(key) = value;
  return *this;
}

NSCoder& NSCoder::encode(double value, std::string_view key) {
  archive_->writable(key) = value;
  return *this;
}

NSCoder& NSCoder::encode(std::string_view value, std::string_view key) {
  archive_->writable(key) = std::string(value);
  return *this;
}

NSCoder& NSCoder::encode(CGPoint value, std::string_view key) {
  archive_->writable(key) = {value.x, value.y};
  return *this;
}

NSCoder& NSCoder::encode(CGSize value, std::string_view key) {
  archive_->writable(key) = {value.width, value.height};
  return *this;
}

NSCoder& NSCoder::encode(CGRect value, std::string_view key) {
  archive_->writable(key) = {value.origin.x, value.origin.y, value.size.width, value.size.height};
  return *this;
}

NSCoder& NSCoder::encode(const NSCoder& value, std::string_view key) {
  const Json copy = *value.archive_->object;  // the value may be a part of this archive
  archive_->writable(key) = copy;
  return *this;
}

void NSCoder::fail(std::string reason) {
  if (!failure_) failure_ = std::move(reason);
}

}  // namespace tessaluna::platform
