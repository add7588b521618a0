#include "tessaluna/platform/interface_files/archivedLooks.h"

#include <algorithm>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/text/NSFont.h"

namespace tessaluna::platform {

namespace {

constexpr struct {
  std::string_view name;
  Ref<NSColor> (*color)();
} namedColors[] = {{"blackColor", NSColor::blackColor},
                   {"whiteColor", NSColor::whiteColor},
                   {"darkGrayColor", NSColor::darkGrayColor},
                   {"grayColor", NSColor::grayColor},
                   {"lightGrayColor", NSColor::lightGrayColor},
                   {"redColor", NSColor::redColor},
                   {"greenColor", NSColor::greenColor},
                   {"blueColor", NSColor::blueColor},
                   {"clearColor", NSColor::clearColor},
                   {"controlTextColor", NSColor::controlTextColor},
                   {"disabledControlTextColor", NSColor::disabledControlTextColor},
                   {"alternateSelectedControlColor", NSColor::alternateSelectedControlColor},
                   {"alternateSelectedControlTextColor", NSColor::alternateSelectedControlTextColor},
                   {"selectedTextBackgroundColor", NSColor::selectedTextBackgroundColor},
                   {"unemphasizedSelectedTextBackgroundColor", NSColor::unemphasizedSelectedTextBackgroundColor},
                   {"controlColor", NSColor::controlColor},
                   {"controlBackgroundColor", NSColor::controlBackgroundColor},
                   {"windowBackgroundColor", NSColor::windowBackgroundColor},
                   {"keyboardFocusIndicatorColor", NSColor::keyboardFocusIndicatorColor}};

template <class T>
std::optional<Ref<T>> presentOnly(Ref<T> object) {
  return object ? std::optional(std::move(object)) : std::nullopt;
}

}  // namespace

std::optional<Ref<NSColor>> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<Ref<NSColor>>) {
  if (const auto text = values.decodeStringForKey(name)) {
    for (const auto& named : namedColors)
      if (named.name == *text) return named.color();
    return std::nullopt;
  }
  const auto numbers = values.decodeNumbersForKey(name);
  const auto isComponent = [](double number) { return number >= 0 && number <= 1; };
  if (!numbers || (numbers->size() != 3 && numbers->size() != 4)) return std::nullopt;
  if (!std::all_of(numbers->begin(), numbers->end(), isComponent)) return std::nullopt;
  return NSColor::colorWithSRGBRed((*numbers)[0], (*numbers)[1], (*numbers)[2], numbers->size() == 4 ? (*numbers)[3] : 1);
}

std::optional<Ref<NSFont>> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<Ref<NSFont>>) {
  if (const auto size = values.numberForKey(name))
    return *size > 0 ? presentOnly(NSFont::systemFontOfSize(*size)) : std::nullopt;
  const std::optional<NSCoder> font = values.decodeCoderForKey(name);
  if (!font) return std::nullopt;
  const double size = font->decodeDoubleForKey("size");
  const std::optional<std::string> family = font->decodeStringForKey("name");
  const bool isBold = !family && font->decodeBoolForKey("bold");
  if (size <= 0 || font->firstUnknownKey() || font->firstMisfitKey()) return std::nullopt;
  if (family) return presentOnly(NSFont::fontWithName(*family, size));
  return isBold ? NSFont::boldSystemFontOfSize(size) : NSFont::systemFontOfSize(size);
}

std::optional<Ref<NSImage>> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<Ref<NSImage>>) {
  const auto imageName = values.decodeStringForKey(name);
  return imageName ? presentOnly(NSImage::imageNamed(*imageName)) : std::nullopt;
}

}  // namespace tessaluna::platform
