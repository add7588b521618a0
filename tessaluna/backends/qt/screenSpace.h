// Between Qt's screen space, whose y axis points down, and ours, which has its origin at the lower left of the primary
// screen and y up. Both count in points.
#pragma once

#include <QPointF>
#include <QRect>
#include <optional>
#include <vector>

#include "tessaluna/platform/backend/Backend.h"

class QScreen;

namespace tessaluna::backend::qt {

CGPoint pointOnScreen(QPointF qtPoint);
// Of the pixel whose upper left corner the point is, which no two rectangles side by side both hold.
CGPoint middleOfPixel(QPoint qtPoint);
QPoint qtPointOf(CGPoint pointOnScreen);  // the nearest whole one
CGRect rectOnScreen(const QRect& qtRect);
// Rounded outward to what Qt can place a window at; no side is shorter than a point.
QRect qtRectOf(CGRect rectOnScreen);

Screen screenOf(const QScreen& screen);
std::vector<Screen> allScreens();  // the primary one first

}  // namespace tessaluna::backend::qt
