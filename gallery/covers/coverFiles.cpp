#include "gallery/covers/coverFiles.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace gallery {

namespace {

// A sun over waves, with a thin edge that shows whether the picture is complete.
QImage drawCover(QSize size, int hue) {
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF all(0, 0, size.width(), size.height());
  const double shorter = std::min(all.width(), all.height());
  QLinearGradient sky(all.topLeft(), all.bottomLeft());
  sky.setColorAt(0, QColor::fromHsv(hue, 150, 70));
  sky.setColorAt(1, QColor::fromHsv((hue + 40) % 360, 110, 240));
  painter.fillRect(all, sky);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromHsv((hue + 60) % 360, 60, 255));
  painter.drawEllipse(all.center() - QPointF(0, all.height() * 0.1), shorter * 0.24, shorter * 0.24);
  constexpr int waves = 5;
  for (int i = 0; i < waves; ++i) {
    const double top = all.height() * (0.55 + 0.09 * i);
    QPainterPath wave(QPointF(0, all.height()));
    wave.lineTo(0, top);
    constexpr int humps = 4;
    const double step = all.width() / humps, rise = shorter * 0.05;
    for (int hump = 0; hump < humps; ++hump) {
      const double start = step * hump, side = (hump + i) % 2 ? rise : -rise;
      wave.cubicTo(start + step / 3, top + side, start + step * 2 / 3, top + side, start + step, top);
    }
    wave.lineTo(all.bottomRight());
    painter.setBrush(QColor::fromHsv((hue + 8 * i) % 360, 160, 190 - 28 * i));
    painter.drawPath(wave);
  }
  const double edge = std::max(1.0, shorter / 120);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor::fromHsv((hue + 60) % 360, 40, 255), edge, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(all.adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2));
  return image;
}

FileBytes encoded(QSize size, int hue, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  drawCover(size, hue).save(&buffer, format);
  const auto all = std::as_bytes(std::span(bytes.constData(), static_cast<std::size_t>(bytes.size())));
  return {all.begin(), all.end()};
}

FileBytes cutOff() {
  FileBytes bytes = encoded({600, 600}, 120, "JPG");
  bytes.resize(bytes.size() / 2);
  return bytes;
}

constexpr CoverFile files[] = {
    {"wide", "PNG, 1,600 by 500 pixels",
     [] {
       return encoded({1600, 500}, 200, "PNG");
     }},
    {"tall", "JPEG, 500 by 1,600 pixels",
     [] {
       return encoded({500, 1600}, 280, "JPG");
     }},
    {"square", "JPEG, 600 by 600 pixels",
     [] {
       return encoded({600, 600}, 330, "JPG");
     }},
    {"tiny", "PNG, 24 by 24 pixels",
     [] {
       return encoded({24, 24}, 20, "PNG");
     }},
    {"huge", "JPEG, 6,000 by 6,000 pixels",
     [] {
       return encoded({6000, 6000}, 230, "JPG");
     },
     /*hasManyPixels=*/true},
    {"cut-off", "JPEG, half of the file", cutOff},
    {"absent", "no image", [] { return FileBytes(); }},
};

}  // namespace

std::span<const CoverFile> coverFiles() { return files; }

}  // namespace gallery
