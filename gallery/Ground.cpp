#include "gallery/Ground.h"

#include <QHBoxLayout>
#include <QPainter>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSView.h"

namespace gallery {

using tessaluna::backend::Color;
using namespace tessaluna::platform;

namespace {

constexpr int radius = 7, margin = 14, checkSize = 8;

constexpr Color lightGround{0.97, 0.97, 0.976}, lightText{0.08, 0.08, 0.1};
constexpr Color darkGround{0.145, 0.149, 0.169}, darkText{0.93, 0.93, 0.94};

QColor colorOf(const Color& color) {
  return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue));
}

// White and a gray, of the palette.
QBrush checkeredBrush() {
  const NeutralAxis axis = NeutralAxis::ofPalette();
  QImage tile(2 * checkSize, 2 * checkSize, QImage::Format_RGB32);
  tile.fill(colorOf(axis.ground()));
  QPainter painter(&tile);
  const QColor check = colorOf(axis.mapped({0.89, 0.89, 0.89}));
  painter.fillRect(0, 0, checkSize, checkSize, check);
  painter.fillRect(checkSize, checkSize, checkSize, checkSize, check);
  painter.end();
  return QBrush(tile);
}

}  // namespace

NeutralAxis axisOf(GroundKind kind) {
  switch (kind) {
    case GroundKind::Light: return {lightText, lightGround};
    case GroundKind::Dark: return {darkText, darkGround};
    case GroundKind::Palette:
    case GroundKind::Checkered: break;
  }
  return NeutralAxis::ofPalette();
}

void tintForGround(NSView& view, GroundKind kind) {
  if (kind == GroundKind::Palette || kind == GroundKind::Checkered) return;
  const auto color = [](const Color& c) { return NSColor::colorWithSRGBRed(c.red, c.green, c.blue, 1); };
  view.setTintColor(color(axisOf(kind).text()));
  view.setTintGroundColor(color(axisOf(kind).ground()));
}

void keepColors(NSView& view) {
  view.setTintColor(NSColor::blackColor());
  view.setTintGroundColor(NSColor::whiteColor());
}

Ground::Ground(QWidget* content) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(margin, margin, margin, margin);
  row->addWidget(content, 0, Qt::AlignCenter);
}

void Ground::setKind(GroundKind kind) {
  if (kind == kind_) return;
  kind_ = kind;
  setProperty("ground", kind == GroundKind::Dark ? "dark" : "");  // for the style sheet
  update();
}

void Ground::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kind_ == GroundKind::Checkered ? checkeredBrush() : QBrush(colorOf(axisOf(kind_).ground())));
  painter.drawRoundedRect(rect(), radius, radius);
}

}  // namespace gallery
