#include <cmath>

#include "agg_conv_curve.h"
#include "agg_conv_dash.h"
#include "agg_conv_stroke.h"
#include "agg_path_storage.h"
#include "agg_pixfmt_rgba.h"
#include "agg_rasterizer_scanline_aa.h"
#include "agg_renderer_scanline.h"
#include "agg_rendering_buffer.h"
#include "agg_scanline_u.h"
#include "bench/outlines/Contestant.h"

namespace bench {

namespace {

agg::path_storage toAgg(const tessaluna::backend::Path& path) {
  agg::path_storage storage;
  const tessaluna::backend::CGPoint* p = path.points().data();
  for (const tessaluna::backend::PathVerb verb : path.verbs()) {
    switch (verb) {
      case tessaluna::backend::PathVerb::Move: storage.move_to(p[0].x, p[0].y); break;
      case tessaluna::backend::PathVerb::Line: storage.line_to(p[0].x, p[0].y); break;
      case tessaluna::backend::PathVerb::Curve: storage.curve4(p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y); break;
      case tessaluna::backend::PathVerb::Close: storage.close_polygon(); break;
    }
    p += tessaluna::backend::pointCount(verb);
  }
  return storage;
}

agg::rgba8 toAgg(const tessaluna::backend::Color& c) {
  return agg::rgba8(agg::rgba(c.red, c.green, c.blue, c.alpha)).premultiply();
}

class AggContestant final : public Contestant {
 public:
  explicit AggContestant(const Drawing& drawing)
      : pixels_(std::size_t(drawing.width) * std::size_t(drawing.height)),
        buffer_(reinterpret_cast<agg::int8u*>(pixels_.data()), unsigned(drawing.width), unsigned(drawing.height),
                drawing.width * 4),
        format_(buffer_),
        base_(format_),
        renderer_(base_),
        outlines_(drawing.outlines) {
    for (const Outline& outline : outlines_) paths_.push_back(toAgg(outline.path));
    rasterizer_.clip_box(0, 0, drawing.width, drawing.height);
  }
  void draw() override {
    for (std::size_t i = 0; i < outlines_.size(); ++i) {
      const Outline& outline = outlines_[i];
      Curves curves(paths_[i]);
      rasterizer_.reset();
      if (outline.pen && !outline.pen->dash.empty()) {
        const std::vector<double>& lengths = outline.pen->dash;
        agg::conv_dash<Curves> dashes(curves);
        for (std::size_t n = 0; n + 1 < lengths.size(); n += 2) dashes.add_dash(lengths[n], lengths[n + 1]);
        dashes.dash_start(outline.pen->dashPhase);
        stroke(dashes, *outline.pen);
      } else if (outline.pen) {
        stroke(curves, *outline.pen);
      } else {
        const bool isEvenOdd = outline.rule == tessaluna::backend::FillRule::EvenOdd;
        rasterizer_.filling_rule(isEvenOdd ? agg::fill_even_odd : agg::fill_non_zero);
        rasterizer_.add_path(curves);
      }
      renderer_.color(toAgg(outline.color));
      agg::render_scanlines(rasterizer_, scanline_, renderer_);
    }
  }
  const std::uint32_t* row(int y) const override { return pixels_.data() + std::size_t(y) * std::size_t(buffer_.width()); }

 private:
  using Curves = agg::conv_curve<agg::path_storage>;
  using Format = agg::pixfmt_bgra32_pre;
  using Base = agg::renderer_base<Format>;

  template <class Lines>
  void stroke(Lines& lines, const Pen& pen) {
    constexpr agg::line_cap_e caps[] = {agg::butt_cap, agg::round_cap, agg::square_cap};
    constexpr agg::line_join_e joins[] = {agg::miter_join_revert, agg::round_join, agg::bevel_join};
    agg::conv_stroke<Lines> outline(lines);
    outline.width(pen.width);
    outline.line_cap(caps[int(pen.cap)]);
    outline.line_join(joins[int(pen.join)]);
    outline.miter_limit(pen.miterLimit);
    rasterizer_.filling_rule(agg::fill_non_zero);
    rasterizer_.add_path(outline);
  }

  std::vector<std::uint32_t> pixels_;
  agg::rendering_buffer buffer_;
  Format format_;
  Base base_;
  agg::renderer_scanline_aa_solid<Base> renderer_;
  agg::rasterizer_scanline_aa<> rasterizer_;
  agg::scanline_u8 scanline_;
  const std::vector<Outline>& outlines_;
  std::vector<agg::path_storage> paths_;
};

}  // namespace

std::unique_ptr<Contestant> makeAggContestant(const Drawing& drawing) { return std::make_unique<AggContestant>(drawing); }

}  // namespace bench
