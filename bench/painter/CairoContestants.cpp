#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "bench/painter/Scene.h"

namespace bench {

namespace {

using namespace tessaluna::backend;

class CairoContestant : public Contestant {
 public:
  CairoContestant(int width, int height)
      : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)), cairo_(cairo_create(surface_)) {}
  ~CairoContestant() override {
    cairo_destroy(cairo_);
    cairo_surface_destroy(surface_);
  }
  const std::uint32_t* row(int y) const override {
    const std::size_t stride = std::size_t(cairo_image_surface_get_stride(surface_));
    return reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface_) + std::size_t(y) * stride);
  }

 protected:
  cairo_t* cairo() { return cairo_; }

 private:
  cairo_surface_t* surface_;
  cairo_t* cairo_;
};

class CairoGradient final : public CairoContestant {
 public:
  explicit CairoGradient(const GradientWork& work)
      : CairoContestant(work.width, work.height),
        width_(work.width),
        height_(work.height),
        pattern_(cairo_pattern_create_linear(work.start.x, work.start.y, work.end.x, work.end.y)) {
    for (const GradientStop& stop : work.stops) {
      const Color& c = stop.color;
      cairo_pattern_add_color_stop_rgba(pattern_, stop.location, c.red, c.green, c.blue, c.alpha);
    }
  }
  ~CairoGradient() override { cairo_pattern_destroy(pattern_); }
  void draw() override {
    cairo_set_source(cairo(), pattern_);
    cairo_rectangle(cairo(), 0, 0, width_, height_);
    cairo_fill(cairo());
  }

 private:
  int width_, height_;
  cairo_pattern_t* pattern_;
};

class CairoPicture final : public CairoContestant {
 public:
  CairoPicture(const ImageWork& work, Filter filter)
      : CairoContestant(work.width, work.height),
        place_(work.place),
        image_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, work.image.width, work.image.height)) {
    for (int y = 0; y < work.image.height; ++y) {
      auto* row = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(image_) +
                                                   y * cairo_image_surface_get_stride(image_));
      std::copy_n(work.image.argb.data() + std::size_t(y) * std::size_t(work.image.width), work.image.width, row);
    }
    cairo_surface_mark_dirty(image_);
    pattern_ = cairo_pattern_create_for_surface(image_);
    cairo_pattern_set_filter(pattern_, filter == Filter::Best ? CAIRO_FILTER_BEST : CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(pattern_, CAIRO_EXTEND_PAD);
    cairo_matrix_t toImage;
    cairo_matrix_init_scale(&toImage, work.image.width / place_.size.width, work.image.height / place_.size.height);
    cairo_matrix_translate(&toImage, -place_.origin.x, -place_.origin.y);
    cairo_pattern_set_matrix(pattern_, &toImage);
    const double x = place_.origin.x + place_.size.width / 2, y = place_.origin.y + place_.size.height / 2;
    cairo_translate(cairo(), x, y);
    cairo_rotate(cairo(), work.degrees * 3.14159265358979323846 / 180);
    cairo_translate(cairo(), -x, -y);
  }
  ~CairoPicture() override {
    cairo_pattern_destroy(pattern_);
    cairo_surface_destroy(image_);
  }
  void draw() override {
    cairo_set_source(cairo(), pattern_);
    cairo_rectangle(cairo(), place_.origin.x, place_.origin.y, place_.size.width, place_.size.height);
    cairo_fill(cairo());
  }

 private:
  CGRect place_;
  cairo_surface_t* image_;
  cairo_pattern_t* pattern_;
};

// Division by a box's width, with rounding, as a multiplication.
struct Box {
  explicit Box(int boxWidth) : width(boxWidth), before(boxWidth / 2), factor((1 << 16) / boxWidth + 1) {}
  unsigned char mean(int sum) const { return static_cast<unsigned char>(((sum + before) * factor) >> 16); }
  int width, before, factor;
};

// The means of as many neighbours in a row as the box is wide.
void boxAcross(const unsigned char* from, unsigned char* to, int count, const Box& box) {
  const int after = box.width - box.before;
  int sum = 0, i = 0;
  for (int k = 0; k < after; ++k) sum += from[k];
  for (; i < box.before; ++i) {
    to[i] = box.mean(sum);
    sum += from[i + after];
  }
  for (; i < count - after; ++i) {
    to[i] = box.mean(sum);
    sum += from[i + after] - from[i - box.before];
  }
  for (; i < count; ++i) {
    to[i] = box.mean(sum);
    sum -= from[i - box.before];
  }
}

// The same in all columns at once.
void boxDown(const unsigned char* from, unsigned char* to, int width, int height, int stride, const Box& box, int* sums) {
  const int after = box.width - box.before;
  std::fill_n(sums, width, 0);
  for (int y = -after; y < height; ++y) {
    if (y >= 0) {
      for (int x = 0; x < width; ++x) to[y * stride + x] = box.mean(sums[x]);
    }
    if (y + after < height) {
      for (int x = 0; x < width; ++x) sums[x] += from[(y + after) * stride + x];
    }
    if (y - box.before >= 0) {
      for (int x = 0; x < width; ++x) sums[x] -= from[(y - box.before) * stride + x];
    }
  }
}

class CairoShadow final : public CairoContestant {
 public:
  explicit CairoShadow(const ShadowWork& work)
      : CairoContestant(work.width, work.height),
        work_(work),
        // Three boxes of this width approximate the Gaussian, as drawing programs do it.
        box_(std::max(1, int(std::floor(work.blur / 2 * 3 * std::sqrt(2 * 3.14159265358979323846) / 4 + 0.5)))),
        mask_(cairo_image_surface_create(CAIRO_FORMAT_A8, work.width, work.height)),
        maskCairo_(cairo_create(mask_)),
        other_(std::size_t(cairo_image_surface_get_stride(mask_)) * std::size_t(work.height)),
        sums_(std::size_t(work.width)) {}
  ~CairoShadow() override {
    cairo_destroy(maskCairo_);
    cairo_surface_destroy(mask_);
  }
  void draw() override {
    cairo_set_operator(maskCairo_, CAIRO_OPERATOR_CLEAR);
    cairo_paint(maskCairo_);
    cairo_set_operator(maskCairo_, CAIRO_OPERATOR_OVER);
    addRoundedRect(maskCairo_);
    cairo_fill(maskCairo_);
    cairo_surface_flush(mask_);
    blur();
    cairo_surface_mark_dirty(mask_);
    cairo_set_source_rgba(cairo(), 0, 0, 0, 1);
    cairo_mask_surface(cairo(), mask_, 0, work_.below);
    cairo_set_source_rgba(cairo(), 0.2, 0.4, 0.8, 1);
    addRoundedRect(cairo());
    cairo_fill(cairo());
  }

 private:
  void addRoundedRect(cairo_t* cairo) const {
    const CGRect& r = work_.rect;
    const double radius = work_.radius, quarter = 3.14159265358979323846 / 2;
    cairo_new_path(cairo);
    cairo_arc(cairo, CGRectGetMaxX(r) - radius, r.origin.y + radius, radius, -quarter, 0);
    cairo_arc(cairo, CGRectGetMaxX(r) - radius, CGRectGetMaxY(r) - radius, radius, 0, quarter);
    cairo_arc(cairo, r.origin.x + radius, CGRectGetMaxY(r) - radius, radius, quarter, 2 * quarter);
    cairo_arc(cairo, r.origin.x + radius, r.origin.y + radius, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(cairo);
  }
  void blur() {
    unsigned char *from = cairo_image_surface_get_data(mask_), *to = other_.data();
    const int stride = cairo_image_surface_get_stride(mask_);
    for (int pass = 0; pass < 3; ++pass, std::swap(from, to)) {
      for (int y = 0; y < work_.height; ++y) boxAcross(from + y * stride, to + y * stride, work_.width, box_);
    }
    for (int pass = 0; pass < 3; ++pass, std::swap(from, to)) {
      boxDown(from, to, work_.width, work_.height, stride, box_, sums_.data());
    }
  }

  ShadowWork work_;
  Box box_;
  cairo_surface_t* mask_;
  cairo_t* maskCairo_;
  std::vector<unsigned char> other_;
  std::vector<int> sums_;  // one per column
};

}  // namespace

std::unique_ptr<Contestant> makeCairo(const GradientWork& work) { return std::make_unique<CairoGradient>(work); }
std::unique_ptr<Contestant> makeCairo(const ImageWork& work, Filter filter) {
  return std::make_unique<CairoPicture>(work, filter);
}
std::unique_ptr<Contestant> makeCairo(const ShadowWork& work) { return std::make_unique<CairoShadow>(work); }

}  // namespace bench
