#include "tessaluna/backends/qt/UnseenChange.h"

#include "tessaluna/backends/qt/x11.h"

namespace tessaluna::backend::qt {

UnseenChange::UnseenChange() : connection_(connectionToX11()) {
  if (connection_) grabX11(connection_);
}

UnseenChange::~UnseenChange() {
  if (connection_) ungrabX11(connection_);
}

}  // namespace tessaluna::backend::qt
