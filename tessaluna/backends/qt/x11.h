// The X server, for the few things that Qt has no words for. Everywhere else the connection is null, and nothing is done.
#pragma once

#include <QRect>
#include <optional>

#include "tessaluna/platform/foundation/languageVersion.h"

class QWindow;
struct xcb_connection_t;

namespace tessaluna::backend::qt {

xcb_connection_t* connectionToX11();

// Between these two nobody else sees what becomes of the screen. Both need a connection.
void grabX11(xcb_connection_t* connection);
void ungrabX11(xcb_connection_t* connection);

// In device pixels of the whole screen, which Qt's points are not when their scale is not a whole number. The corner is absent
// elsewhere than on X11, and for a window that the server does not know.
std::optional<QPoint> deviceCornerOf(const QWindow& window);
void setDevicePlace(const QWindow& window, const QRect& place);

}  // namespace tessaluna::backend::qt
