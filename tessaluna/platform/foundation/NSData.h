// Bytes as an object that does not change. What they mean is their owner's business.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSData : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSData() = default;
  explicit NSData(std::span<const std::byte> bytes) : bytes_(bytes.begin(), bytes.end()) {}  // copied
  // dataWithBytes:length:
  NSData(const void* bytes, std::size_t length) : NSData(std::span(static_cast<const std::byte*>(bytes), length)) {}

  std::size_t length() const { return bytes_.size(); }
  std::span<const std::byte> bytes() const { return bytes_; }
  // Copies the first bytes, as many as there are, to where there is room for so many.
  void getBytes(void* buffer, std::size_t length) const;

  bool isEqual(const NSObject* other) const override;

 private:
  std::vector<std::byte> bytes_;
};

}  // namespace tessaluna::platform
