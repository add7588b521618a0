#include "tessaluna/backends/qt/UnseenChange.h"

#include <QGuiApplication>
#include <QLibrary>

namespace tessaluna::backend::qt {

namespace {

// Qt has loaded the library when it is on X11: looked up in it, the operations need neither headers nor linking.
struct Xcb {
  struct Cookie {
    unsigned sequence;
  };
  Cookie (*grabServer)(xcb_connection_t*) = nullptr;
  Cookie (*ungrabServer)(xcb_connection_t*) = nullptr;
  int (*flush)(xcb_connection_t*) = nullptr;

  Xcb() {
    QLibrary library("xcb", 1);
    grabServer = reinterpret_cast<decltype(grabServer)>(library.resolve("xcb_grab_server"));
    ungrabServer = reinterpret_cast<decltype(ungrabServer)>(library.resolve("xcb_ungrab_server"));
    flush = reinterpret_cast<decltype(flush)>(library.resolve("xcb_flush"));
  }
  bool isThere() const { return grabServer && ungrabServer && flush; }
};

const Xcb& xcb() {
  static const Xcb loaded;
  return loaded;
}

xcb_connection_t* connectionToX11() {
#if QT_CONFIG(xcb)
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 && xcb().isThere() ? x11->connection() : nullptr;
#else
  return nullptr;
#endif
}

}  // namespace

UnseenChange::UnseenChange() : connection_(connectionToX11()) {
  if (connection_) xcb().grabServer(connection_);
}

UnseenChange::~UnseenChange() {
  if (!connection_) return;
  xcb().ungrabServer(connection_);
  xcb().flush(connection_);
}

}  // namespace tessaluna::backend::qt
