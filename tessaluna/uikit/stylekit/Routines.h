// The description of all draw routines of the kit, one table: tools, the gallery and tests read it, so that a
// new glyph shows up everywhere with its one row.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace TessalunaUIKit {

// Which glyphs belong together; one source file each.
enum class RoutineFamily {
  ArrowsAndCrosses,
  Transport,
  AlbumOverlays,
  TrackRow,
  InfoButtonGlyphs,
  Placeholders,
  FormatAndServiceBadges,
  Browse,
  Mood
};
std::string_view familyName(RoutineFamily family);  // "Arrows and crosses"

struct RoutineFlag {
  std::string_view name;
  bool isOnByDefault = false;
};

struct Routine {
  std::string_view name;  // "LeftArrow"
  RoutineFamily family{};
  std::string_view frameArgument;  // "frame" or "buttonFrame"
  tessaluna::platform::CGRect defaultFrame;
  std::span<const RoutineFlag> flags;  // in the order of the arguments
  // With one value for each flag.
  void (*draw)(tessaluna::platform::CGRect frame, std::span<const bool> flags) = nullptr;
  tessaluna::platform::Ref<tessaluna::platform::NSImage> (*image)(tessaluna::platform::CGSize size,
                                                                  std::span<const bool> flags) = nullptr;  // or absent
  // With all arguments left to their defaults.
  void (*drawByDefault)() = nullptr;
  tessaluna::platform::Ref<tessaluna::platform::NSImage> (*imageByDefault)() = nullptr;

  std::string member() const;                        // "drawLeftArrow"
  std::string selector() const;                      // "drawLeftArrowWithFrame:enabled:isPressed:"
  std::optional<std::string> imageMember() const;    // "imageOfLeftArrow"
  std::optional<std::string> imageSelector() const;  // "imageOfLeftArrowWithImageSize:enabled:isPressed:"
};

// In the order of their families.
std::span<const Routine> routines();

// By name, member form or selector; null if there is none.
const Routine* findRoutine(std::string_view name);

}  // namespace TessalunaUIKit
