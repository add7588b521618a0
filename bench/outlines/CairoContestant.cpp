#include <cairo.h>

#include "bench/outlines/Contestant.h"

namespace bench {

namespace {

void addToPath(cairo_t* cairo, const tessaluna::backend::Path& path) {
  const tessaluna::backend::CGPoint* p = path.points().data();
  for (const tessaluna::backend::PathVerb verb : path.verbs()) {
    switch (verb) {
      case tessaluna::backend::PathVerb::Move: cairo_move_to(cairo, p[0].x, p[0].y); break;
      case tessaluna::backend::PathVerb::Line: cairo_line_to(cairo, p[0].x, p[0].y); break;
      case tessaluna::backend::PathVerb::Curve: cairo_curve_to(cairo, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y); break;
      case tessaluna::backend::PathVerb::Close: cairo_close_path(cairo); break;
    }
    p += tessaluna::backend::pointCount(verb);
  }
}

class CairoContestant final : public Contestant {
 public:
  explicit CairoContestant(const Drawing& drawing)
      : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, drawing.width, drawing.height)),
        cairo_(cairo_create(surface_)),
        outlines_(drawing.outlines) {
    for (const Outline& outline : outlines_) {
      cairo_new_path(cairo_);
      addToPath(cairo_, outline.path);
      paths_.push_back(cairo_copy_path(cairo_));
    }
  }
  ~CairoContestant() override {
    for (cairo_path_t* path : paths_) cairo_path_destroy(path);
    cairo_destroy(cairo_);
    cairo_surface_destroy(surface_);
  }
  void draw() override {
    for (std::size_t i = 0; i < outlines_.size(); ++i) {
      const Outline& outline = outlines_[i];
      const tessaluna::backend::Color& c = outline.color;
      cairo_new_path(cairo_);
      cairo_append_path(cairo_, paths_[i]);
      cairo_set_source_rgba(cairo_, c.red, c.green, c.blue, c.alpha);
      if (outline.pen) {
        constexpr cairo_line_cap_t caps[] = {CAIRO_LINE_CAP_BUTT, CAIRO_LINE_CAP_ROUND, CAIRO_LINE_CAP_SQUARE};
        constexpr cairo_line_join_t joins[] = {CAIRO_LINE_JOIN_MITER, CAIRO_LINE_JOIN_ROUND, CAIRO_LINE_JOIN_BEVEL};
        cairo_set_line_width(cairo_, outline.pen->width);
        cairo_set_line_cap(cairo_, caps[int(outline.pen->cap)]);
        cairo_set_line_join(cairo_, joins[int(outline.pen->join)]);
        cairo_set_miter_limit(cairo_, outline.pen->miterLimit);
        cairo_set_dash(cairo_, outline.pen->dash.data(), int(outline.pen->dash.size()), outline.pen->dashPhase);
        cairo_stroke(cairo_);
      } else {
        const bool isEvenOdd = outline.rule == tessaluna::backend::FillRule::EvenOdd;
        cairo_set_fill_rule(cairo_, isEvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
        cairo_fill(cairo_);
      }
    }
  }
  const std::uint32_t* row(int y) const override {
    const std::size_t stride = std::size_t(cairo_image_surface_get_stride(surface_));
    return reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface_) + std::size_t(y) * stride);
  }

 private:
  cairo_surface_t* surface_;
  cairo_t* cairo_;
  const std::vector<Outline>& outlines_;
  std::vector<cairo_path_t*> paths_;
};

}  // namespace

std::unique_ptr<Contestant> makeCairoContestant(const Drawing& drawing) {
  return std::make_unique<CairoContestant>(drawing);
}

}  // namespace bench
