#include "tessaluna/uikit/stylekit/palette.h"

#include "tessaluna/uikit/stylekit/Recipes.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

// A static of a function is guarded by the language: the first reader makes it, on whatever thread, and only that one.
struct Palette::Cache {
  static const Ref<NSColor>& qobuzColor() {
    static const Ref<NSColor> stored = color(0.196, 0.595, 0.713, 1);
    return stored;
  }
  static const Ref<NSColor>& tessalunaBlue() {
    static const Ref<NSColor> stored = color(0.136, 0.507, 0.968, 1);
    return stored;
  }
  static const Ref<NSColor>& highResAudioColor() {
    static const Ref<NSColor> stored = color(0.304, 0.304, 0.304, 1);
    return stored;
  }
};

Ref<NSColor> Palette::qobuzColor() { return Cache::qobuzColor(); }
Ref<NSColor> Palette::tessalunaBlue() { return Cache::tessalunaBlue(); }
Ref<NSColor> Palette::highResAudioColor() { return Cache::highResAudioColor(); }

}  // namespace TessalunaUIKit
