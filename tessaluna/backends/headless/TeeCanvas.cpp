#include "tessaluna/backends/headless/TeeCanvas.h"

namespace tessaluna::backend::headless {

void TeeCanvas::saveState() {
  both([](Canvas& c) { c.saveState(); });
}
void TeeCanvas::restoreState() {
  both([](Canvas& c) { c.restoreState(); });
}
void TeeCanvas::concat(const CGAffineTransform& transform) {
  both([&](Canvas& c) { c.concat(transform); });
}
void TeeCanvas::clipRect(CGRect rect) {
  both([&](Canvas& c) { c.clipRect(rect); });
}
void TeeCanvas::clipPath(const Path& path, FillRule rule) {
  both([&](Canvas& c) { c.clipPath(path, rule); });
}
void TeeCanvas::setFillColor(const Color& color) {
  both([&](Canvas& c) { c.setFillColor(color); });
}
void TeeCanvas::setStrokeColor(const Color& color) {
  both([&](Canvas& c) { c.setStrokeColor(color); });
}
void TeeCanvas::setShadow(const Shadow& shadow) {
  both([&](Canvas& c) { c.setShadow(shadow); });
}
void TeeCanvas::setAlpha(double alpha) {
  both([&](Canvas& c) { c.setAlpha(alpha); });
}
void TeeCanvas::setBlendMode(BlendMode mode) {
  both([&](Canvas& c) { c.setBlendMode(mode); });
}
void TeeCanvas::beginTransparencyLayer() {
  both([](Canvas& c) { c.beginTransparencyLayer(); });
}
void TeeCanvas::endTransparencyLayer() {
  both([](Canvas& c) { c.endTransparencyLayer(); });
}
void TeeCanvas::fillPath(const Path& path, FillRule rule) {
  both([&](Canvas& c) { c.fillPath(path, rule); });
}
void TeeCanvas::strokePath(const Path& path, const StrokeStyle& style) {
  both([&](Canvas& c) { c.strokePath(path, style); });
}
void TeeCanvas::fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) {
  both([&](Canvas& c) { c.fillGradient(path, rule, gradient); });
}

void TeeCanvas::drawGlyphs(const GlyphRun& run, CGPoint origin) {
  both([&](Canvas& canvas) { canvas.drawGlyphs(run, origin); });
}

void TeeCanvas::drawImage(const ImagePixels& image, CGRect source, CGRect destination) {
  both([&](Canvas& canvas) { canvas.drawImage(image, source, destination); });
}

}  // namespace tessaluna::backend::headless
