#include "tessaluna/backends/qt/x11.h"

#include <QGuiApplication>
#include <QLibrary>
#include <QWindow>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace tessaluna::backend::qt {

namespace {

using WindowId = std::uint32_t;

// As the server's library has them.
struct Cookie {
  unsigned sequence;
};
struct Geometry {
  std::uint8_t type, depth;
  std::uint16_t sequence;
  std::uint32_t length;
  WindowId root;
  std::int16_t x, y;
  std::uint16_t width, height, border;
};
struct Translated {
  std::uint8_t type, isOnSameScreen;
  std::uint16_t sequence;
  std::uint32_t length;
  WindowId child;
  std::int16_t x, y;
};

// Qt has loaded the library when it is on X11: looked up in it, the operations need neither headers nor linking.
struct Xcb {
  QLibrary library{"xcb", 1};
  template <class Operation>
  Operation* find(const char* name) {
    const auto found = reinterpret_cast<Operation*>(library.resolve(name));
    isThere = isThere && found;
    return found;
  }

  bool isThere = true;
  Cookie (*grabServer)(xcb_connection_t*) = find<Cookie(xcb_connection_t*)>("xcb_grab_server");
  Cookie (*ungrabServer)(xcb_connection_t*) = find<Cookie(xcb_connection_t*)>("xcb_ungrab_server");
  int (*flush)(xcb_connection_t*) = find<int(xcb_connection_t*)>("xcb_flush");
  Cookie (*getGeometry)(xcb_connection_t*, WindowId) = find<Cookie(xcb_connection_t*, WindowId)>("xcb_get_geometry");
  Geometry* (*geometryReply)(xcb_connection_t*, Cookie,
                             void**) = find<Geometry*(xcb_connection_t*, Cookie, void**)>("xcb_get_geometry_reply");
  Cookie (*translate)(xcb_connection_t*, WindowId, WindowId, std::int16_t, std::int16_t) =
      find<Cookie(xcb_connection_t*, WindowId, WindowId, std::int16_t, std::int16_t)>("xcb_translate_coordinates");
  Translated* (*translateReply)(xcb_connection_t*, Cookie, void**) =
      find<Translated*(xcb_connection_t*, Cookie, void**)>("xcb_translate_coordinates_reply");
  Cookie (*configure)(xcb_connection_t*, WindowId, std::uint16_t, const void*) =
      find<Cookie(xcb_connection_t*, WindowId, std::uint16_t, const void*)>("xcb_configure_window");
};

Xcb& xcb() {
  static Xcb loaded;
  return loaded;
}

// Replies are the caller's to free, and null after an error, which is one, too.
struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
std::unique_ptr<Reply, Free> replyOf(Reply* (*wait)(xcb_connection_t*, Cookie, void**), xcb_connection_t* connection,
                                     Cookie cookie) {
  void* error = nullptr;
  std::unique_ptr<Reply, Free> reply(wait(connection, cookie, &error));
  std::free(error);
  return reply;
}

// Null for a window without a native one: asking would make it.
xcb_connection_t* connectionFor(const QWindow& window) { return window.handle() ? connectionToX11() : nullptr; }
WindowId idOf(const QWindow& window) { return static_cast<WindowId>(window.winId()); }

}  // namespace

xcb_connection_t* connectionToX11() {
#if QT_CONFIG(xcb)
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 && xcb().isThere ? x11->connection() : nullptr;
#else
  return nullptr;
#endif
}

void grabX11(xcb_connection_t* connection) { xcb().grabServer(connection); }

void ungrabX11(xcb_connection_t* connection) {
  xcb().ungrabServer(connection);
  xcb().flush(connection);
}

std::optional<QPoint> deviceCornerOf(const QWindow& window) {
  xcb_connection_t* connection = connectionFor(window);
  if (!connection) return std::nullopt;
  const WindowId id = idOf(window);
  const auto geometry = replyOf(xcb().geometryReply, connection, xcb().getGeometry(connection, id));
  if (!geometry) return std::nullopt;
  const auto corner = replyOf(xcb().translateReply, connection, xcb().translate(connection, id, geometry->root, 0, 0));
  return corner ? std::optional(QPoint(corner->x, corner->y)) : std::nullopt;
}

void setDevicePlace(const QWindow& window, const QRect& place) {
  xcb_connection_t* connection = connectionFor(window);
  if (!connection) return;
  constexpr std::uint16_t placeAndSize = 1 | 2 | 4 | 8;
  const std::array<std::int32_t, 4> values{place.x(), place.y(), place.width(), place.height()};
  xcb().configure(connection, idOf(window), placeAndSize, values.data());
  xcb().flush(connection);
}

}  // namespace tessaluna::backend::qt
