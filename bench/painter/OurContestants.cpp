#include <cmath>

#include "bench/painter/Scene.h"
#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"

namespace bench {

namespace {

using namespace tessaluna::backend;
using raster::Bitmap;
using raster::RasterCanvas;

class OurContestant : public Contestant {
 public:
  OurContestant(int width, int height) : bitmap_(*Bitmap::make(width, height)), canvas_(bitmap_) {}
  const std::uint32_t* row(int y) const override { return bitmap_.row(y); }

 protected:
  void turnOver() { canvas_.concat({1, 0, 0, -1, 0, double(bitmap_.height())}); }
  RasterCanvas& canvas() { return canvas_; }

 private:
  Bitmap bitmap_;
  RasterCanvas canvas_;
};

class OurGradient final : public OurContestant {
 public:
  explicit OurGradient(const GradientWork& work)
      : OurContestant(work.width, work.height),
        stops_(work.stops),
        path_(Path::rect({0, 0, double(work.width), double(work.height)})),
        start_(work.start),
        end_(work.end) {
    turnOver();
  }
  void draw() override { canvas().fillGradient(path_, FillRule::NonZero, {.stops = stops_, .start = start_, .end = end_}); }

 private:
  std::vector<GradientStop> stops_;
  Path path_;
  CGPoint start_, end_;
};

class OurImage final : public OurContestant {
 public:
  explicit OurImage(const ImageWork& work)
      : OurContestant(work.width, work.height),
        image_(work.image),
        place_{{work.place.origin.x, work.height - CGRectGetMaxY(work.place)}, work.place.size} {
    const CGPoint middle{place_.origin.x + place_.size.width / 2, place_.origin.y + place_.size.height / 2};
    const double angle = -work.degrees * 3.14159265358979323846 / 180, c = std::cos(angle), s = std::sin(angle);
    if (angle == 0) return;
    canvas().concat(CGAffineTransform::translation(-middle.x, -middle.y)
                        .then({c, s, -s, c, 0, 0})
                        .then(CGAffineTransform::translation(middle.x, middle.y)));
  }
  void draw() override { canvas().drawImage(image_, {{0, 0}, {double(image_.width), double(image_.height)}}, place_); }

 private:
  ImagePixels image_;
  CGRect place_;
};

class OurShadow final : public OurContestant {
 public:
  explicit OurShadow(const ShadowWork& work)
      : OurContestant(work.width, work.height), path_(Path::roundedRect(work.rect, {work.radius, work.radius})) {
    turnOver();
    canvas().setShadow({.offset = {0, -work.below}, .blur = work.blur, .color = Color{0, 0, 0, 1}});
    canvas().setFillColor({0.2, 0.4, 0.8, 1});
  }
  void draw() override { canvas().fillPath(path_, FillRule::NonZero); }

 private:
  Path path_;
};

}  // namespace

std::unique_ptr<Contestant> makeOurs(const GradientWork& work) { return std::make_unique<OurGradient>(work); }
std::unique_ptr<Contestant> makeOurs(const ImageWork& work) { return std::make_unique<OurImage>(work); }
std::unique_ptr<Contestant> makeOurs(const ShadowWork& work) { return std::make_unique<OurShadow>(work); }

}  // namespace bench
