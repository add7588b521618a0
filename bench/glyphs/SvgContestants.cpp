#include <cairo.h>
#include <librsvg/rsvg.h>

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>
#include <string>

#include "bench/glyphs/peers.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace bench {

namespace {

using tessaluna::platform::numberText;

std::string pairText(tessaluna::backend::CGPoint p) { return numberText(p.x) + ' ' + numberText(p.y) + ' '; }

std::string pathText(const tessaluna::backend::Path& path) {
  std::string text;
  const tessaluna::backend::CGPoint* p = path.points().data();
  for (const tessaluna::backend::PathVerb verb : path.verbs()) {
    switch (verb) {
      case tessaluna::backend::PathVerb::Move: text += 'M' + pairText(p[0]); break;
      case tessaluna::backend::PathVerb::Line: text += 'L' + pairText(p[0]); break;
      case tessaluna::backend::PathVerb::Curve: text += 'C' + pairText(p[0]) + pairText(p[1]) + pairText(p[2]); break;
      case tessaluna::backend::PathVerb::Close: text += 'Z'; break;
    }
    p += tessaluna::backend::pointCount(verb);
  }
  return text;
}

std::string paintText(std::string_view property, const tessaluna::backend::Color& color) {
  const auto part = [](double v) { return std::to_string(int(std::lround(v * 255))); };
  const std::string name(property);
  std::string text = ' ' + name + "=\"rgb(" + part(color.red) + ',' + part(color.green) + ',' + part(color.blue) + ")\"";
  if (color.alpha < 1) text += ' ' + name + "-opacity=\"" + numberText(color.alpha) + '"';
  return text;
}

std::string documentText(const Drawing& drawing) {
  const std::string width = std::to_string(drawing.width), height = std::to_string(drawing.height);
  std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
                     "\" viewBox=\"0 0 " + width + ' ' + height + "\">";
  for (const Outline& outline : drawing.outlines) {
    text += "<path d=\"" + pathText(outline.path) + '"';
    if (outline.pen) {
      constexpr const char* caps[] = {"butt", "round", "square"};
      constexpr const char* joins[] = {"miter", "round", "bevel"};
      text += " fill=\"none\"" + paintText("stroke", outline.color) + " stroke-width=\"" + numberText(outline.pen->width) +
              "\" stroke-linecap=\"" + caps[int(outline.pen->cap)] + "\" stroke-linejoin=\"" +
              joins[int(outline.pen->join)] + "\" stroke-miterlimit=\"" + numberText(outline.pen->miterLimit) + '"';
      std::string dash;
      for (const double length : outline.pen->dash) dash += numberText(length) + ' ';
      if (!dash.empty())
        text += " stroke-dasharray=\"" + dash + "\" stroke-dashoffset=\"" + numberText(outline.pen->dashPhase) + '"';
    } else {
      text += paintText("fill", outline.color);
      if (outline.rule == tessaluna::backend::FillRule::EvenOdd) text += " fill-rule=\"evenodd\"";
    }
    text += "/>";
  }
  return text + "</svg>";
}

class QtSvgContestant final : public Contestant {
 public:
  explicit QtSvgContestant(const Drawing& drawing)
      : image_(drawing.width, drawing.height, QImage::Format_ARGB32_Premultiplied),
        document_(QByteArray::fromStdString(documentText(drawing))),
        everywhere_(0, 0, drawing.width, drawing.height) {
    if (!document_.isValid()) tessaluna::platform::stopProgram("bench: QtSvg does not take the document");
    image_.fill(Qt::transparent);
    painter_.begin(&image_);
    painter_.setRenderHint(QPainter::Antialiasing);
  }
  void draw() override { document_.render(&painter_, everywhere_); }
  const std::uint32_t* row(int y) const override { return reinterpret_cast<const std::uint32_t*>(image_.constScanLine(y)); }

 private:
  QImage image_;
  QSvgRenderer document_;
  QRectF everywhere_;
  QPainter painter_;
};

class LibrsvgContestant final : public Contestant {
 public:
  explicit LibrsvgContestant(const Drawing& drawing)
      : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, drawing.width, drawing.height)),
        cairo_(cairo_create(surface_)),
        everywhere_{0, 0, double(drawing.width), double(drawing.height)} {
    const std::string text = documentText(drawing);
    document_ = rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(text.data()), text.size(), nullptr);
    if (!document_) tessaluna::platform::stopProgram("bench: librsvg does not take the document");
  }
  ~LibrsvgContestant() override {
    g_object_unref(document_);
    cairo_destroy(cairo_);
    cairo_surface_destroy(surface_);
  }
  void draw() override { rsvg_handle_render_document(document_, cairo_, &everywhere_, nullptr); }
  const std::uint32_t* row(int y) const override {
    const std::size_t stride = std::size_t(cairo_image_surface_get_stride(surface_));
    return reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface_) + std::size_t(y) * stride);
  }

 private:
  cairo_surface_t* surface_;
  cairo_t* cairo_;
  RsvgRectangle everywhere_;
  RsvgHandle* document_ = nullptr;
};

}  // namespace

std::unique_ptr<Contestant> makeQtSvgContestant(const Drawing& drawing) {
  return std::make_unique<QtSvgContestant>(drawing);
}
std::unique_ptr<Contestant> makeLibrsvgContestant(const Drawing& drawing) {
  return std::make_unique<LibrsvgContestant>(drawing);
}

}  // namespace bench
