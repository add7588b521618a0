// The address of a resource, or a part of one that is relative to another, by the grammar of RFC 3986. A value.
//
//   const auto address = URL::URLWithString("https://example.org/albums?id=7#top");  // absent for a text that is not a URL
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class URL {
 public:
  // Absent for a text that the grammar does not know: an empty one, one with blanks or characters beyond ASCII, a "%" without
  // two hexadecimal digits, a second "#", a colon before the first "/" that ends no scheme, a port that is not a number.
  static std::optional<URL> URLWithString(std::string_view text);

  const std::string& absoluteString() const { return text_; }  // as it was given

  // The parts as they are written, with their percent signs; absent where there is none.
  std::optional<std::string_view> scheme() const { return part(scheme_); }
  std::optional<std::string_view> user() const { return part(user_); }  // with a password after a colon
  std::optional<std::string_view> host() const { return part(host_); }  // an IPv6 address in its brackets
  std::optional<std::string_view> port() const { return part(port_); }
  std::string_view path() const { return std::string_view(text_).substr(path_.start, path_.length); }
  std::optional<std::string_view> query() const { return part(query_); }
  std::optional<std::string_view> fragment() const { return part(fragment_); }

  friend bool operator==(const URL& a, const URL& b) { return a.text_ == b.text_; }

 private:
  struct Span {
    std::size_t start = 0, length = 0;
  };
  using Part = std::optional<Span>;
  std::optional<std::string_view> part(const Part& part) const {
    return part ? std::optional(std::string_view(text_).substr(part->start, part->length)) : std::nullopt;
  }
  bool parseAuthority(std::size_t start, std::size_t end);

  std::string text_;
  Part scheme_, user_, host_, port_, query_, fragment_;
  Span path_;
};

}  // namespace tessaluna::platform
