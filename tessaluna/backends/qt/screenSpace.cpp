#include "tessaluna/backends/qt/screenSpace.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace tessaluna::backend::qt {

namespace {

// In Qt's space; the origin where there is no screen at all.
QPoint lowerLeftOfPrimaryScreen() {
  const QScreen* primary = QGuiApplication::primaryScreen();
  if (!primary) return {};
  const QRect place = primary->geometry();
  return {place.x(), place.y() + place.height()};
}

}  // namespace

CGPoint pointOnScreen(QPointF qtPoint) {
  const QPoint origin = lowerLeftOfPrimaryScreen();
  return {qtPoint.x() - origin.x(), origin.y() - qtPoint.y()};
}

CGPoint middleOfPixel(QPoint qtPoint) { return pointOnScreen(QPointF(qtPoint) + QPointF(0.5, 0.5)); }

QPoint qtPointOf(CGPoint point) {
  const QPoint origin = lowerLeftOfPrimaryScreen();
  return QPointF(origin.x() + point.x, origin.y() - point.y).toPoint();
}

CGRect rectOnScreen(const QRect& qtRect) {
  const CGPoint lowerLeft = pointOnScreen(QPointF(qtRect.x(), qtRect.y() + qtRect.height()));
  return {lowerLeft, {double(qtRect.width()), double(qtRect.height())}};
}

QRect qtRectOf(CGRect rect) {
  // Beyond this no desktop has a place, and sums of it stay within an int.
  static constexpr double farthest = 1e6;
  const auto whole = [](double v) { return std::isnan(v) ? 0 : static_cast<int>(std::clamp(v, -farthest, farthest)); };
  const QPoint origin = lowerLeftOfPrimaryScreen();
  const int left = whole(std::floor(CGRectGetMinX(rect))), right = whole(std::ceil(CGRectGetMaxX(rect)));
  const int lower = whole(std::floor(CGRectGetMinY(rect))), upper = whole(std::ceil(CGRectGetMaxY(rect)));
  return {origin.x() + left, origin.y() - upper, std::max(right - left, 1), std::max(upper - lower, 1)};
}

Screen screenOf(const QScreen& screen) {
  return {.frame = rectOnScreen(screen.geometry()),
          .visibleFrame = rectOnScreen(screen.availableGeometry()),
          .scale = screen.devicePixelRatio()};
}

std::vector<Screen> allScreens() {
  std::vector<Screen> result;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const bool isPrimary = screen == QGuiApplication::primaryScreen();
    result.insert(isPrimary ? result.begin() : result.end(), screenOf(*screen));
  }
  return result;
}

}  // namespace tessaluna::backend::qt
