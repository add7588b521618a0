#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/DisabledLook.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&TrackRowFavoriteButton::setIsFavorite, "isFavorite">()};

}  // namespace

const ClassInfo TrackRowFavoriteButton::staticClassInfo{
    .name = "TessalunaUIKit.TrackRowFavoriteButton", .base = &TrackRowControl::staticClassInfo, .properties = properties};

std::string TrackRowFavoriteButton::accessibilityRole() const {
  return isAccessibilityElement() ? std::string(NSAccessibilityCheckBoxRole) : TrackRowControl::accessibilityRole();
}

AccessibilityValue TrackRowFavoriteButton::accessibilityValue() const {
  return isAccessibilityElement() ? AccessibilityValue(isFavorite_ ? 1.0 : 0.0) : AccessibilityValue();
}

void TrackRowFavoriteButton::drawRect(CGRect) {
  const DisabledLook look(*this);
  if (hasMouseOnRow()) TessalunaStyleKit::drawFavoriteAlbumOverlay(bounds(), isFavorite_, isPressed(), mouseInside());
}

}  // namespace TessalunaUIKit
