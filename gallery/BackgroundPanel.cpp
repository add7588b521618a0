#include "gallery/BackgroundPanel.h"

#include <QHBoxLayout>
#include <QPainter>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSView.h"

namespace gallery {

using tessaluna::backend::Color;
using namespace tessaluna::platform;

namespace {

constexpr int radius = 7, margin = 14, checkSize = 8;

constexpr Color lightBackground{0.97, 0.97, 0.976}, lightText{0.08, 0.08, 0.1};
constexpr Color darkBackground{0.145, 0.149, 0.169}, darkText{0.93, 0.93, 0.94};

QColor colorOf(const Color& color) {
  return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue));
}

// The palette's white and a gray.
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

NeutralAxis axisOf(BackgroundKind kind) {
  switch (kind) {
    case BackgroundKind::Light: return {lightText, lightBackground};
    case BackgroundKind::Dark: return {darkText, darkBackground};
    case BackgroundKind::Palette:
    case BackgroundKind::Checkered: break;
  }
  return NeutralAxis::ofPalette();
}

void tintForBackground(NSView& view, BackgroundKind kind) {
  if (kind == BackgroundKind::Palette || kind == BackgroundKind::Checkered) return;
  const auto color = [](const Color& c) { return NSColor::colorWithSRGBRed(c.red, c.green, c.blue, 1); };
  view.setTintColor(color(axisOf(kind).text()));
  view.setTintGroundColor(color(axisOf(kind).ground()));
}

void keepColors(NSView& view) {
  view.setTintColor(NSColor::blackColor());
  view.setTintGroundColor(NSColor::whiteColor());
}

BackgroundPanel::BackgroundPanel(QWidget* content) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(margin, margin, margin, margin);
  row->addWidget(content, 0, Qt::AlignCenter);
}

void BackgroundPanel::setKind(BackgroundKind kind) {
  if (kind == kind_) return;
  kind_ = kind;
  setProperty("ground", kind == BackgroundKind::Dark ? "dark" : "");  // for the style sheet
  update();
}

void BackgroundPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kind_ == BackgroundKind::Checkered ? checkeredBrush() : QBrush(colorOf(axisOf(kind_).ground())));
  painter.drawRoundedRect(rect(), radius, radius);
}

}  // namespace gallery
