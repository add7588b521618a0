// A page of text as the kit draws it, beside the same page as QPainter draws it.
#include <QImage>
#include <QPainter>
#include <cmath>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/TextLayout.h"
#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

struct Writing {
  const char* family;
  double size;
  Color color;
  const char* text;
};

constexpr Color black{0, 0, 0, 1}, gray{0.4, 0.4, 0.45, 1}, red{0.8, 0.1, 0.1, 1}, faint{0.1, 0.2, 0.6, 0.5};

// Families that are not there are replaced by the same one on both pages.
constexpr Writing page[] = {
    {"DejaVu Sans", 10, black, "The quick brown fox jumps over the lazy dog, 0123456789 times (or so)."},
    {"DejaVu Sans", 11, gray, "AVATAR To. We: kerning, fi fl ffi ligatures – “quotes”, dashes — and “…”"},
    {"DejaVu Sans", 12, red, "Gärten, smørrebrød, été, žluťoučký kůň, İstanbul, Ærø, łódź, straße, ça va?"},
    {"DejaVu Sans", 13, black, "Quiet Harbour – Reprise    Amélie Lindqvist, Søren Petrosyan    6:43"},
    {"DejaVu Sans", 13.5, faint, "Ξεσκεπάζω την ψυχοφθόρα βδελυγμία, και ακόμα πιο πολλά λόγια"},
    {"DejaVu Sans", 14, black, "Съешь же ещё этих мягких французских булок, да выпей чаю"},
    {"DejaVu Sans", 15, gray, "نص حكيم له سر قاطع وذو شأن عظيم مكتوب على ثوب أخضر"},
    {"DejaVu Sans", 16, black, "Զվարճալի պատմություն  და კიდევ ქართული ტექსტი"},
    {"DejaVu Serif", 9, black, "Serifs at nine points: the smallest that anybody reads, with thin strokes and thick."},
    {"DejaVu Serif", 13, red, "Serifs at thirteen points, Illuminating Wavy Type 1234567890"},
    {"DejaVu Serif", 22, faint, "Serifs at twenty-two: Hamburgefonstiv"},
    {"DejaVu Sans Mono", 12, black, "for (int i = 0; i < n; ++i) { sum += a[i] * b[i]; }  // of a row"},
    {"DejaVu Sans", 28, gray, "Twenty-eight points: Rg&@"},
    {"DejaVu Sans", 48, black, "Forty-eight Åg"},
};
constexpr int pageWidth = 500, pageHeight = 330, leftEdge = 12;

double heightOf(const Writing& writing) { return std::ceil(writing.size * 1.4); }

Ref<NSFont> fontOf(const Writing& writing) {
  const auto font = NSFont::fontWithName(writing.family, writing.size);
  return font ? font : NSFont::systemFontOfSize(writing.size);
}

QImage whitePage(double scale) {
  QImage image(int(pageWidth * scale), int(pageHeight * scale), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::white);
  return image;
}

QImage kitsPage(double scale) {
  QImage image = whitePage(scale);
  auto bitmap = raster::Bitmap::borrow(reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
                                       std::size_t(image.bytesPerLine()));
  raster::RasterCanvas canvas(*bitmap, {.scale = scale});
  const CanvasScope drawing(canvas);
  double top = pageHeight - 4;
  for (const Writing& writing : page) {
    const Color& color = writing.color;
    NSAttributes attributes;
    attributes[NSFontAttributeName] = fontOf(writing);
    attributes[NSForegroundColorAttributeName] = NSColor::colorWithSRGBRed(color.red, color.green, color.blue, color.alpha);
    const double height = heightOf(writing);
    drawInRect(writing.text, {leftEdge, top - height, 2 * pageWidth, height}, attributes);
    top -= height;
  }
  return image;
}

QImage painterPage(double scale) {
  QImage image = whitePage(scale);
  QPainter painter(&image);
  double top = 4;
  for (const Writing& writing : page) {
    const auto family = fontOf(writing)->description().family;
    QFont font = family.empty() ? QGuiApplication::font() : QFont(QString::fromStdString(family));
    font.setPointSizeF(writing.size * 72 / QGuiApplication::primaryScreen()->logicalDotsPerInch());
    font.setHintingPreference(QFont::PreferNoHinting);
    painter.setFont(font);
    painter.setPen(QColor::fromRgbF(float(writing.color.red), float(writing.color.green), float(writing.color.blue),
                                    float(writing.color.alpha)));
    const double height = heightOf(writing);
    // Our texts start at the left, whichever way they run.
    painter.drawText(QRectF(leftEdge, top, 2 * pageWidth, height), Qt::AlignLeft | Qt::AlignAbsolute | Qt::TextSingleLine,
                     QString::fromUtf8(writing.text));
    top += height;
  }
  return image;
}

struct Difference {
  double onAverage = 0;                   // over all channels of all pixels, of 255
  double whereInk = 0;                    // over the pixels that are not blank on both pages
  double inkOfKit = 0, inkOfPainter = 0;  // how far from white a page is, on average
};

Difference differenceBetween(const QImage& kits, const QImage& painters) {
  double sum = 0, inked = 0;
  Difference difference;
  for (int y = 0; y < kits.height(); ++y) {
    for (int x = 0; x < kits.width(); ++x) {
      const QRgb a = kits.pixel(x, y), b = painters.pixel(x, y);
      sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
      if (a != 0xffffffff || b != 0xffffffff) inked += 3;
      difference.inkOfKit += 765 - qRed(a) - qGreen(a) - qBlue(a);
      difference.inkOfPainter += 765 - qRed(b) - qGreen(b) - qBlue(b);
    }
  }
  const double all = 3.0 * kits.width() * kits.height();
  difference.onAverage = sum / all;
  difference.whereInk = sum / inked;
  difference.inkOfKit /= all;
  difference.inkOfPainter /= all;
  return difference;
}

using TextPictureTest = QtTest;

}  // namespace

TEST_F(TextPictureTest, APageOfTextIsThatOfQPainterAtEveryScale) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    SCOPED_TRACE(scale);
    const Difference difference = differenceBetween(kitsPage(scale), painterPage(scale));
    EXPECT_LE(difference.onAverage, 2);
    // Stricter than the average of a page that is mostly white: glyphs that stand a quarter of a pixel aside give 10 here.
    EXPECT_LE(difference.whereInk, 6);
    EXPECT_GT(difference.inkOfKit, 15) << "a page of text is not blank";
    EXPECT_NEAR(difference.inkOfKit, difference.inkOfPainter, 0.2) << "neither is bolder";
  }
}

}  // namespace tessaluna::backend::qt
