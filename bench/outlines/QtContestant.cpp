#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include "bench/outlines/Contestant.h"

namespace bench {

namespace {

QColor toQt(const tessaluna::backend::Color& c) {
  return QColor::fromRgbF(float(c.red), float(c.green), float(c.blue), float(c.alpha));
}

QPointF toQt(tessaluna::backend::CGPoint p) { return {p.x, p.y}; }

QPainterPath toQt(const Outline& outline) {
  QPainterPath path;
  path.setFillRule(outline.rule == tessaluna::backend::FillRule::EvenOdd ? Qt::OddEvenFill : Qt::WindingFill);
  const tessaluna::backend::CGPoint* p = outline.path.points().data();
  for (const tessaluna::backend::PathVerb verb : outline.path.verbs()) {
    switch (verb) {
      case tessaluna::backend::PathVerb::Move: path.moveTo(toQt(p[0])); break;
      case tessaluna::backend::PathVerb::Line: path.lineTo(toQt(p[0])); break;
      case tessaluna::backend::PathVerb::Curve: path.cubicTo(toQt(p[0]), toQt(p[1]), toQt(p[2])); break;
      case tessaluna::backend::PathVerb::Close: path.closeSubpath(); break;
    }
    p += tessaluna::backend::pointCount(verb);
  }
  return path;
}

QPen toQt(const Pen& pen, const tessaluna::backend::Color& color) {
  constexpr Qt::PenCapStyle caps[] = {Qt::FlatCap, Qt::RoundCap, Qt::SquareCap};
  constexpr Qt::PenJoinStyle joins[] = {Qt::SvgMiterJoin, Qt::RoundJoin, Qt::BevelJoin};
  QPen native(toQt(color), pen.width, Qt::SolidLine, caps[int(pen.cap)], joins[int(pen.join)]);
  native.setMiterLimit(pen.miterLimit);
  if (!pen.dash.empty()) {
    // Qt measures dashes in widths of the pen.
    QList<qreal> dash;
    for (const double length : pen.dash) dash.push_back(length / pen.width);
    native.setDashPattern(dash);
    native.setDashOffset(pen.dashPhase / pen.width);
  }
  return native;
}

class QtContestant final : public Contestant {
 public:
  explicit QtContestant(const Drawing& drawing)
      : image_(drawing.width, drawing.height, QImage::Format_ARGB32_Premultiplied) {
    image_.fill(Qt::transparent);
    for (const Outline& outline : drawing.outlines) {
      shapes_.push_back({toQt(outline), outline.pen ? QBrush() : QBrush(toQt(outline.color)),
                         outline.pen ? toQt(*outline.pen, outline.color) : QPen(), outline.pen.has_value()});
    }
    painter_.begin(&image_);
    painter_.setRenderHint(QPainter::Antialiasing);
  }
  void draw() override {
    for (const Shape& shape : shapes_) {
      if (shape.isStroked) painter_.strokePath(shape.path, shape.pen);
      else painter_.fillPath(shape.path, shape.brush);
    }
  }
  const std::uint32_t* row(int y) const override { return reinterpret_cast<const std::uint32_t*>(image_.constScanLine(y)); }

 private:
  struct Shape {
    QPainterPath path;
    QBrush brush;
    QPen pen;
    bool isStroked;
  };

  QImage image_;
  std::vector<Shape> shapes_;
  QPainter painter_;
};

}  // namespace

std::unique_ptr<Contestant> makeQtContestant(const Drawing& drawing) { return std::make_unique<QtContestant>(drawing); }

}  // namespace bench
