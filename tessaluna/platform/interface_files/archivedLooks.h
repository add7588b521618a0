// Colors, fonts and images as interface files write them; memberTables.h finds these for the setters that take one.
//
//   a color  the name of a standard or system color ("blueColor", "controlTextColor"), or its sRGB components from 0 to 1 as an
//            array of three, or of four with the alpha
//   a font   a number: the system's font of that size in points; or {"size": 13, "bold": true} or {"name": "Serif", "size": 13},
//            where a size is above 0 and a name that of an installed family
//   an image the name that the host gave it (NSImage::setImageNamed)
//
// Absent for a value of another kind and for an unknown name.
#pragma once

#include <optional>
#include <string_view>
#include <type_traits>

#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/text/Forward.h"

namespace tessaluna::platform {

class NSCoder;

std::optional<Ref<NSColor>> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<Ref<NSColor>>);
std::optional<Ref<NSFont>> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<Ref<NSFont>>);
std::optional<Ref<NSImage>> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<Ref<NSImage>>);

}  // namespace tessaluna::platform
