#include "tessaluna/platform/backend/SystemColor.h"

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend {

Color defaultSystemColor(SystemColor color) {
  switch (color) {
    case SystemColor::ControlText: return {0, 0, 0, 0.85};
    case SystemColor::DisabledControlText: return {0, 0, 0, 0.35};
    case SystemColor::PlaceholderText: return {0, 0, 0, 0.35};
    case SystemColor::AlternateSelectedControl: return {0.02, 0.39, 0.85, 1};
    case SystemColor::AlternateSelectedControlText: return {1, 1, 1, 1};
    case SystemColor::SelectedTextBackground: return {0.7, 0.84, 1, 1};
    case SystemColor::UnemphasizedSelectedTextBackground: return {0.86, 0.86, 0.86, 1};
    case SystemColor::Control: return {0.97, 0.97, 0.97, 1};
    case SystemColor::ControlBackground: return {1, 1, 1, 1};
    case SystemColor::WindowBackground: return {0.93, 0.93, 0.93, 1};
    case SystemColor::KeyboardFocusIndicator: return {0.23, 0.6, 0.99, 1};
  }
  platform::unreachable();
}

}  // namespace tessaluna::backend
