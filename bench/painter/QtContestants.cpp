#include <QImage>
#include <QPainter>

#include "bench/painter/Scene.h"

namespace bench {

namespace {

using namespace tessaluna::backend;

class QtContestant : public Contestant {
 public:
  QtContestant(int width, int height) : bitmap_(width, height, QImage::Format_ARGB32_Premultiplied) {
    bitmap_.fill(Qt::transparent);
    painter_.begin(&bitmap_);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
  }
  const std::uint32_t* row(int y) const override { return reinterpret_cast<const std::uint32_t*>(bitmap_.constScanLine(y)); }

 protected:
  QPainter& painter() { return painter_; }

 private:
  QImage bitmap_;
  QPainter painter_;
};

class QtGradient final : public QtContestant {
 public:
  explicit QtGradient(const GradientWork& work)
      : QtContestant(work.width, work.height), rect_(0, 0, work.width, work.height) {
    QLinearGradient gradient(work.start.x, work.start.y, work.end.x, work.end.y);
    for (const GradientStop& stop : work.stops) {
      const Color& c = stop.color;
      gradient.setColorAt(stop.location, QColor::fromRgbF(float(c.red), float(c.green), float(c.blue), float(c.alpha)));
    }
    brush_ = QBrush(gradient);
  }
  void draw() override { painter().fillRect(rect_, brush_); }

 private:
  QRectF rect_;
  QBrush brush_;
};

class QtPicture final : public QtContestant {
 public:
  explicit QtPicture(const ImageWork& work)
      : QtContestant(work.width, work.height),
        // The image is opaque, and its format says so.
        image_(QImage(reinterpret_cast<const uchar*>(work.image.argb.data()), work.image.width, work.image.height,
                      QImage::Format_RGB32)
                   .copy()),
        place_(work.place.origin.x, work.place.origin.y, work.place.size.width, work.place.size.height) {
    painter().translate(place_.center());
    painter().rotate(work.degrees);
    painter().translate(-place_.center());
  }
  void draw() override { painter().drawImage(place_, image_); }

 private:
  QImage image_;
  QRectF place_;
};

}  // namespace

std::unique_ptr<Contestant> makeQt(const GradientWork& work) { return std::make_unique<QtGradient>(work); }
std::unique_ptr<Contestant> makeQt(const ImageWork& work) { return std::make_unique<QtPicture>(work); }

}  // namespace bench
