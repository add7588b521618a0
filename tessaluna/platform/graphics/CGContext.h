// A drawing context. It keeps no pixels: it forwards to a canvas, which outlives it. What a canvas does not know, such as
// a pattern in place of a color, is derived here.
#pragma once

#include <vector>

#include "tessaluna/platform/backend/Canvas.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::platform {

using CGBlendMode = backend::BlendMode;
inline constexpr CGBlendMode kCGBlendModeNormal = CGBlendMode::Normal;
inline constexpr CGBlendMode kCGBlendModeCopy = CGBlendMode::Copy;
inline constexpr CGBlendMode kCGBlendModeSourceOut = CGBlendMode::SourceOut;

class CGContext {
 public:
  explicit CGContext(backend::Canvas& canvas) : canvas_(canvas) {}
  CGContext(const CGContext&) = delete;
  CGContext& operator=(const CGContext&) = delete;

  backend::Canvas& canvas() const { return canvas_; }

  void saveState();
  void restoreState();  // without a save, or before the begin of the current layer: nothing

  void concat(const CGAffineTransform& transform) { canvas_.concat(transform); }
  void clipRect(CGRect rect) { canvas_.clipRect(rect); }
  void clipPath(const backend::Path& path, backend::FillRule rule) { canvas_.clipPath(path, rule); }

  void setFillColor(const backend::Color& color);
  void setFillPattern(Ref<NSImage> image);  // laid side by side from the origin
  void setStrokeColor(const backend::Color& color);
  void setStrokePattern(Ref<NSImage> image);
  void setShadow(const backend::Shadow& shadow) { canvas_.setShadow(shadow); }
  CGFloat alpha() const { return state_.alpha; }  // 1 again within a layer
  void setAlpha(CGFloat alpha);
  void setBlendMode(CGBlendMode mode) { canvas_.setBlendMode(mode); }
  void beginTransparencyLayer();
  void endTransparencyLayer();  // without a begin: nothing

  void fillPath(const backend::Path& path, backend::FillRule rule);
  void strokePath(const backend::Path& path, const backend::StrokeStyle& style);
  void fillGradient(const backend::Path& path, backend::FillRule rule, const backend::LinearGradient& gradient) {
    canvas_.fillGradient(path, rule, gradient);
  }
  void drawGlyphs(const backend::GlyphRun& run, CGPoint origin) { canvas_.drawGlyphs(run, origin); }
  void drawImage(const backend::ImagePixels& image, CGRect source, CGRect destination) {
    canvas_.drawImage(image, source, destination);
  }

 private:
  struct State {
    Ref<NSImage> fillPattern, strokePattern;  // null where a color is in force
    CGFloat alpha = 1;
  };
  struct Saved {
    enum class By { State, Layer };
    State state;
    By by;
  };
  void drawTiles(NSImage& tile, CGRect tiles);
  bool takeBack(Saved::By by);

  backend::Canvas& canvas_;
  State state_;
  std::vector<Saved> saved_;
};

// State that is saved at once and restored at the closing brace.
class GraphicsStateScope {
 public:
  explicit GraphicsStateScope(CGContext& context) : context_(context) { context_.saveState(); }
  ~GraphicsStateScope() { context_.restoreState(); }
  GraphicsStateScope(const GraphicsStateScope&) = delete;
  GraphicsStateScope& operator=(const GraphicsStateScope&) = delete;

 private:
  CGContext& context_;
};

// The calls under their published names. Offset and blur count in base space; no color means no shadow.
void CGContextSetShadowWithColor(CGContext& context, CGSize offset, CGFloat blur, const NSColor* color);
inline void CGContextSetAlpha(CGContext& context, CGFloat alpha) { context.setAlpha(alpha); }
inline void CGContextSetBlendMode(CGContext& context, CGBlendMode mode) { context.setBlendMode(mode); }
// Auxiliary information is not supported; there is none to pass.
inline void CGContextBeginTransparencyLayer(CGContext& context) { context.beginTransparencyLayer(); }
inline void CGContextEndTransparencyLayer(CGContext& context) { context.endTransparencyLayer(); }

}  // namespace tessaluna::platform
