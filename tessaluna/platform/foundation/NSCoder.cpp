#include "tessaluna/platform/foundation/NSCoder.h"

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>

namespace tessaluna::platform {

using Json = nlohmann::json;

// A coder of an inner object shares the text's one tree with the coder that it came from. Whoever writes gets a tree of
// his own first.
struct NSCoder::Archive {
  std::shared_ptr<Json> tree = std::make_shared<Json>(Json::object());
  Json* object = tree.get();

  const Json* find(std::string_view key) const {
    const auto found = object->find(std::string(key));
    return found == object->end() ? nullptr : &*found;
  }

  Json& writable(std::string_view key) {
    if (object != tree.get() || tree.use_count() > 1) {
      tree = std::make_shared<Json>(*object);
      object = tree.get();
    }
    return (*object)[std::string(key)];
  }

  std::unique_ptr<Archive> inner(const Json& value) const {
    auto archive = std::make_unique<Archive>(*this);
    archive->object = const_cast<Json*>(&value);  // read only, see writable
    return archive;
  }

  // The N numbers of the array below the key; all zero if there is no such array.
  template <std::size_t N>
  std::array<double, N> numbers(std::string_view key) const {
    std::array<double, N> result{};
    const Json* array = find(key);
    if (!array || !array->is_array() || array->size() != N) return result;
    for (const Json& element : *array)
      if (!element.is_number()) return result;
    for (std::size_t i = 0; i < N; ++i) result[i] = (*array)[i].get<double>();
    return result;
  }
};

NSCoder::NSCoder() : archive_(std::make_unique<Archive>()) {}
NSCoder::NSCoder(std::unique_ptr<Archive> archive) : archive_(std::move(archive)) {}
NSCoder::~NSCoder() = default;
NSCoder::NSCoder(NSCoder&&) noexcept = default;
NSCoder& NSCoder::operator=(NSCoder&&) noexcept = default;

NSCoder::NSCoder(std::string_view json) : NSCoder() {
  Json parsed = Json::parse(json, nullptr, /*allow_exceptions=*/false);
  if (parsed.is_discarded()) {
    fail("the archive is not JSON");
  } else if (!parsed.is_object()) {
    fail("the archive is not a JSON object");
  } else {
    *archive_->object = std::move(parsed);
  }
}

NSCoder NSCoder::copy() const { return NSCoder(std::make_unique<Archive>(*archive_)); }

bool NSCoder::containsValueForKey(std::string_view key) const { return archive_->find(key) != nullptr; }

bool NSCoder::decodeBoolForKey(std::string_view key) const {
  const Json* value = archive_->find(key);
  return value && value->is_boolean() && value->get<bool>();
}

std::int64_t NSCoder::decodeIntegerForKey(std::string_view key) const {
  const Json* value = archive_->find(key);
  if (!value) return 0;
  // An unsigned number beyond the signed range would wrap.
  if (value->is_number_unsigned() && value->get<std::uint64_t>() > INT64_MAX) return 0;
  if (value->is_number_integer()) return value->get<std::int64_t>();
  const double number = decodeDoubleForKey(key);
  return number == std::trunc(number) && std::abs(number) < 0x1p63 ? static_cast<std::int64_t>(number) : 0;
}

double NSCoder::decodeDoubleForKey(std::string_view key) const {
  const Json* value = archive_->find(key);
  return value && value->is_number() ? value->get<double>() : 0;
}

std::optional<std::string> NSCoder::decodeStringForKey(std::string_view key) const {
  const Json* value = archive_->find(key);
  if (!value || !value->is_string()) return std::nullopt;
  return value->get<std::string>();
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
  const Json* value = archive_->find(key);
  if (!value || !value->is_object()) return std::nullopt;
  return NSCoder(archive_->inner(*value));
}

std::optional<std::vector<NSCoder>> NSCoder::decodeCodersForKey(std::string_view key) const {
  const Json* value = archive_->find(key);
  if (!value || !value->is_array()) return std::nullopt;
  std::vector<NSCoder> result;
  for (const Json& element : *value) {
    if (!element.is_object()) return std::nullopt;
    result.push_back(NSCoder(archive_->inner(element)));
  }
  return result;
}

std::optional<bool> NSCoder::boolForKey(std::string_view key) const {
  const Json* value = archive_->find(key);
  return value && value->is_boolean() ? std::optional(value->get<bool>()) : std::nullopt;
}

std::optional<double> NSCoder::numberForKey(std::string_view key) const {
  const Json* value = archive_->find(key);
  return value && value->is_number() ? std::optional(value->get<double>()) : std::nullopt;
}

std::vector<std::string> NSCoder::allKeys() const {
  std::vector<std::string> result;
  for (const auto& [key, value] : archive_->object->items()) result.push_back(key);
  return result;
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
