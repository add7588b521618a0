// The pointer's looks in Qt's names.
#pragma once

#include <Qt>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend::qt {

constexpr Qt::CursorShape qtCursorOf(CursorShape shape) {
  switch (shape) {
    case CursorShape::Arrow: return Qt::ArrowCursor;
    case CursorShape::PointingHand: return Qt::PointingHandCursor;
    case CursorShape::IBeam: return Qt::IBeamCursor;
    case CursorShape::ResizeLeftRight: return Qt::SizeHorCursor;
    case CursorShape::ResizeUpDown: return Qt::SizeVerCursor;
  }
  platform::unreachable();
}

}  // namespace tessaluna::backend::qt
