// A canvas that writes SVG: true vectors, shadows as filters. Coordinates in the file count from the upper left corner, one
// unit per point. What SVG cannot say without pixels, such as an image of them, becomes an error, reported once at the end; nothing
// is drawn in its place.
//
// Of the operators other than normal blending these can be said: "source out" as the first thing in its layer, which is how
// the inner shadow of the artwork is made, and "copy" where it replaces nothing that shows through.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::svg {

class SvgCanvas : public Canvas {
 public:
  // A picture of an area of base space, in points. The scale changes the size at which it is shown; in the drawing itself it
  // changes only lines of width 0, which are one pixel wide. In a stretched space the dashes of such lines have the lengths
  // that they have along the x axis, in all directions.
  explicit SvgCanvas(CGRect area, double scale = 1);

  // The whole document. Layers that are open are in it as if they ended here; drawing may continue.
  std::string document() const;
  // What could not be said, the first of it.
  const std::optional<std::string>& error() const { return error_; }

  void saveState() override;
  void restoreState() override;
  void concat(const CGAffineTransform& transform) override;
  void clipRect(CGRect rect) override;
  void clipPath(const Path& path, FillRule rule) override;
  void setFillColor(const Color& color) override { state_.fill = color; }
  void setStrokeColor(const Color& color) override { state_.stroke = color; }
  void setShadow(const Shadow& shadow) override { state_.shadow = shadow; }
  void setAlpha(double alpha) override { state_.alpha = alpha; }
  void setBlendMode(BlendMode mode) override { state_.mode = mode; }
  void beginTransparencyLayer() override;
  void endTransparencyLayer() override;
  void fillPath(const Path& path, FillRule rule) override;
  void strokePath(const Path& path, const StrokeStyle& style) override;
  void fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) override;
  void drawGlyphs(const GlyphRun& run, CGPoint origin) override;
  void drawImage(const ImagePixels& image, CGRect source, CGRect destination) override;

 private:
  struct State {
    CGAffineTransform transform;  // from the current space to the file's
    std::vector<int> clips;       // numbers of clip paths; what all of them leave shows
    Color fill, stroke;
    Shadow shadow;
    double alpha = 1;
    BlendMode mode = BlendMode::Normal;
  };
  // A layer, or the picture itself: what has been written into it.
  struct Layer {
    std::string body;
    State outside;               // in force when it began
    std::size_t savedCount = 0;  // saves that belong to what is around it
    bool isEmpty = true;
  };
  // How an element or a layer is placed in the layer below.
  struct Composite {
    std::string open, close;
  };

  void paint(const std::string& element, bool coversOpaquely);
  void fillInOneColor(const Path& path, FillRule rule, const Color& color);
  std::optional<Composite> compositeFor(const State& state, bool coversOpaquely);
  int addShadowFilter(const Shadow& shadow, bool keepsOutside);
  void fail(std::string what);

  CGRect area_;
  double scale_;
  State state_;
  std::vector<State> saved_;
  std::vector<Layer> layers_;
  std::string definitions_;
  int lastId_ = 0;
  std::optional<std::string> error_;
};

}  // namespace tessaluna::backend::svg
