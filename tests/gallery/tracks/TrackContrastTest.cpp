// The contrast of texts and controls in a row of the track list with their background, measured in the visible pixels, with a
// light and with a dark palette.
#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "gallery/look.h"
#include "gallery/tracks/TrackLibrary.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/graphics/contrast.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/ready/tracks/TrackTableRow.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"
#include "tests/gallery/QtApplicationOfSuite.h"
#include "tests/harness/rowParts.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using namespace tessaluna::ready;
using tessaluna::backend::qt::QtViewWidget;

constexpr double minTextContrast = 4.5, minControlContrast = 3;

tessaluna::backend::Color colorOf(QRgb pixel) {
  return {qRed(pixel) / 255.0, qGreen(pixel) / 255.0, qBlue(pixel) / 255.0, 1};
}

class TrackContrast : public testing::TestWithParam<Theme>, protected QtApplicationOfSuite {
 public:
  // A pixel is half a point, because a pixel that a thin line covers in part says little about the line's color.
  static void SetUpTestSuite() {
    qputenv("QT_SCALE_FACTOR", "2");
    QtApplicationOfSuite::SetUpTestSuite();
  }
  static void TearDownTestSuite() {
    QtApplicationOfSuite::TearDownTestSuite();
    qunsetenv("QT_SCALE_FACTOR");
  }

 protected:
  TrackContrast() : before_(QApplication::palette()) {
    setNeutralsFollowPalette(true);
    look_ = std::make_unique<Look>(*application, GetParam());
    desktop_ = std::make_unique<tessaluna::backend::qt::QtBackend>();
    nsApplication_ = NSApplication::sharedApplication();
    library_ = std::make_shared<TrackLibrary>(generatedTracks(30), TrackLibrary::Covers::Absent);
    table_ = makeTrackTable(library_, [](const std::string&) {});
    widget_ = new QtViewWidget(table_);
    auto* column = new QVBoxLayout(&top_);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(widget_);
    top_.setStyleSheet("background: palette(base)");
    top_.resize(800, 400);
    top_.show();
    QCoreApplication::processEvents();
  }
  ~TrackContrast() override {
    delete widget_;
    setNeutralsFollowPalette(false);
    QApplication::setPalette(before_);
    NSApp = nullptr;
  }

  NSTableView& rows() { return *table_->table(); }
  TrackTableRow& row(std::size_t index) { return dynamic_cast<TrackTableRow&>(*rows().viewAtRow(index)); }
  void hover(std::size_t index) {
    const QPointF place = inWidget(row(index).bounds(), row(index)).center();
    QMouseEvent move(QEvent::MouseMove, place, widget_->mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget_, &move);
    QCoreApplication::processEvents();
    EXPECT_TRUE(harness::partOfRow<TessalunaUIKit::TrackRowFavoriteButton>(rows(), index).hasMouseOnRow());
  }
  void select(std::size_t index) {
    rows().selectRowIndexes(NSIndexSet(index), NSTableView::Selecting::Replaces);
    QCoreApplication::processEvents();
  }

  // The highest contrast of a pixel in the view with the background, which is the most frequent color there.
  double contrastOf(const NSView& view) {
    const QImage shown = top_.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRectF inPoints = inWidget(view.bounds(), view);
    const double scale = shown.devicePixelRatio();
    const QRect place = QRectF(inPoints.topLeft() * scale, inPoints.size() * scale).toAlignedRect() & shown.rect();
    std::map<QRgb, int> counts;
    for (int y = place.top(); y <= place.bottom(); ++y)
      for (int x = place.left(); x <= place.right(); ++x) ++counts[shown.pixel(x, y)];
    EXPECT_GT(counts.size(), 1u) << "nothing is visible";
    const QRgb ground = std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; })->first;
    double most = 1;
    for (const auto& [pixel, count] : counts) most = std::max(most, contrastRatio(colorOf(pixel), colorOf(ground)));
    return most;
  }
  // The contrast of the palest of the row's parts that are of the class.
  template <class Part>
  double leastContrastOf(std::size_t index) {
    double least = 21;
    for (const Ref<NSView>& part : row(index).subviews())
      if (dynamic_cast<Part*>(part.get()) && !part->isHidden()) least = std::min(least, contrastOf(*part));
    return least;
  }
  double contrastOfTexts(std::size_t index) {
    return std::min(leastContrastOf<NSTextField>(index), leastContrastOf<TessalunaUIKit::MultipleLinksTextField>(index));
  }
  double contrastOfControls(std::size_t index) { return leastContrastOf<TessalunaUIKit::TrackRowControl>(index); }

 private:
  // With y from the top of the widget, which is as large as the table.
  QRectF inWidget(CGRect rect, const NSView& view) {
    const CGRect inTable = table_->convertRectFromView(rect, &view);
    return {inTable.origin.x, table_->bounds().size.height - CGRectGetMaxY(inTable), inTable.size.width,
            inTable.size.height};
  }

  const QPalette before_;
  std::unique_ptr<Look> look_;
  std::unique_ptr<tessaluna::backend::qt::QtBackend> desktop_;
  Ref<NSApplication> nsApplication_;
  std::shared_ptr<TrackLibrary> library_;
  Ref<TrackTable> table_;
  QWidget top_;
  QtViewWidget* widget_ = nullptr;
};

TEST_P(TrackContrast, TextsAtRest) { EXPECT_GE(contrastOfTexts(0), minTextContrast); }

TEST_P(TrackContrast, TextsUnderThePointer) {
  hover(0);
  EXPECT_GE(contrastOfTexts(0), minTextContrast);
}

TEST_P(TrackContrast, TextsOfASelectedRow) {
  select(0);
  EXPECT_GE(contrastOfTexts(0), minTextContrast);
}

TEST_P(TrackContrast, TextsOfASelectedRowWithTheKeyboard) {
  rows().window()->makeFirstResponder(&rows());
  select(0);
  EXPECT_GE(contrastOfTexts(0), minTextContrast);
}

TEST_P(TrackContrast, ControlsUnderThePointer) {
  hover(0);
  EXPECT_GE(contrastOfControls(0), minControlContrast);
}

TEST_P(TrackContrast, ControlsOfASelectedRow) {
  select(0);
  hover(0);
  EXPECT_GE(contrastOfControls(0), minControlContrast);
}

INSTANTIATE_TEST_SUITE_P(Themes, TrackContrast, testing::Values(Theme::Light, Theme::Dark),
                         [](const auto& info) { return info.param == Theme::Light ? "Light" : "Dark"; });

}  // namespace
}  // namespace gallery
