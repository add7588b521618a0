// A canvas that paints nothing and records its calls: one JSON object per line for each operation, in order, with
// the coordinates of the current space and all numbers in their shortest form; numbers that are not finite are null.
// The artwork tool prints these lines and tests compare them, so that a difference reads as a sentence.
#pragma once

#include <string>
#include <vector>

#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::recording {

class RecordingCanvas : public Canvas {
 public:
  const std::vector<std::string>& lines() const { return lines_; }
  void clear() { lines_.clear(); }

  void saveState() override;
  void restoreState() override;
  void concat(const CGAffineTransform& transform) override;
  void clipRect(CGRect rect) override;
  void clipPath(const Path& path, FillRule rule) override;
  void setFillColor(const Color& color) override;
  void setStrokeColor(const Color& color) override;
  void setShadow(const Shadow& shadow) override;
  void setAlpha(double alpha) override;
  void setBlendMode(BlendMode mode) override;
  void beginTransparencyLayer() override;
  void endTransparencyLayer() override;
  void fillPath(const Path& path, FillRule rule) override;
  void strokePath(const Path& path, const StrokeStyle& style) override;
  void fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) override;
  void drawGlyphs(const GlyphRun& run, CGPoint origin) override;
  void drawImage(const ImagePixels& image, CGRect source, CGRect destination) override;

 private:
  std::vector<std::string> lines_;
};

}  // namespace tessaluna::backend::recording
