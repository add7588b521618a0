#include "bench/tracklist/QtList.h"

#include <QAbstractListModel>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QSvgRenderer>
#include <functional>

#include "gallery/tracks/coverPictures.h"
#include "tessaluna/backends/svg/SvgCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/ready/tracks/trackPlaces.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace bench {

using gallery::Track;
using TessalunaUIKit::TessalunaStyleKit;

namespace {

enum Role { CoverRole = Qt::UserRole, TitleRole, ArtistsRole, LengthRole, FavoriteRole };

class TrackModel : public QAbstractListModel {
 public:
  explicit TrackModel(std::vector<Track> tracks) : tracks_(std::move(tracks)) {
    // Scaled once, before anything is measured.
    for (const QByteArray& file : gallery::coverFilesOfTracks())
      covers_.push_back(
          QPixmap::fromImage(QImage::fromData(file).scaled(40, 40, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
  }
  int rowCount(const QModelIndex&) const override { return static_cast<int>(tracks_.size()); }
  QVariant data(const QModelIndex& index, int role) const override {
    const Track& track = tracks_[static_cast<std::size_t>(index.row())];
    switch (role) {
      case CoverRole: return covers_[static_cast<std::size_t>(index.row() + 1) % covers_.size()];
      case TitleRole: return QString::fromStdString(track.title);
      case ArtistsRole: return QString::fromStdString(gallery::artistsText(track));
      case LengthRole: return QString::fromStdString(gallery::lengthText(track.seconds));
      case FavoriteRole: return track.isFavorite;
      default: return {};
    }
  }

 private:
  std::vector<Track> tracks_;
  std::vector<QPixmap> covers_;
};

QByteArray svgOf(const std::function<void(tessaluna::platform::CGRect)>& draw) {
  const tessaluna::platform::CGRect frame{0, 0, 15, 15};
  tessaluna::backend::svg::SvgCanvas canvas(frame);
  {
    const tessaluna::platform::CanvasScope drawing(canvas);
    draw(frame);
  }
  return QByteArray::fromStdString(canvas.document());
}

QRectF qtRectOf(tessaluna::platform::CGRect rect, QPoint origin) {
  return {origin.x() + rect.origin.x, origin.y() + rect.origin.y, rect.size.width, rect.size.height};
}

class TrackDelegate : public QStyledItemDelegate {
 public:
  explicit TrackDelegate(Controls controls)
      : controls_(controls),
        play_(svgOf([](auto frame) { TessalunaStyleKit::drawTrackRowPlayPause(frame, false, false, false); })),
        heart_(svgOf([](auto frame) { TessalunaStyleKit::drawFavoriteAlbumOverlay(frame, false, false, false); })),
        redHeart_(svgOf([](auto frame) { TessalunaStyleKit::drawFavoriteAlbumOverlay(frame, true, false, false); })),
        more_(svgOf([](auto frame) { TessalunaStyleKit::drawTrackMore(frame, false, false); })) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {ScrollingList::width - 12, ScrollingList::rowHeight};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QPoint origin = option.rect.topLeft();
    const tessaluna::ready::TrackRowPlaces places = tessaluna::ready::trackRowPlaces(option.rect.width());
    painter->setPen(option.palette.color(QPalette::Text));
    painter->setFont(option.font);
    const auto draw = [&](tessaluna::platform::CGRect place, Qt::Alignment alignment, int role) {
      const QRectF box = qtRectOf(place, origin).adjusted(2, 0, -2, 0);
      const QString text = option.fontMetrics.elidedText(index.data(role).toString(), Qt::ElideRight, int(box.width()));
      painter->drawText(box, alignment | Qt::AlignVCenter | Qt::TextSingleLine, text);
    };
    painter->drawPixmap(qtRectOf(places.cover, origin).topLeft(), index.data(CoverRole).value<QPixmap>());
    draw(places.title, Qt::AlignLeft, TitleRole);
    draw(places.artists, Qt::AlignLeft, ArtistsRole);
    draw(places.time, Qt::AlignRight, LengthRole);
    if (controls_ == Controls::Hidden) return;
    play_.render(painter, qtRectOf(places.play, origin));
    (index.data(FavoriteRole).toBool() ? redHeart_ : heart_).render(painter, qtRectOf(places.favorite, origin));
    more_.render(painter, qtRectOf(places.more, origin));
  }

 private:
  Controls controls_;
  mutable QSvgRenderer play_, heart_, redHeart_, more_;
};

}  // namespace

QtList::QtList(std::vector<Track> tracks, Controls controls)
    : model_(std::make_unique<TrackModel>(std::move(tracks))),
      delegate_(std::make_unique<TrackDelegate>(controls)),
      list_(new QListView(&window_)) {
  dressWindow(window_);
  list_->setGeometry(0, 0, width, height);
  list_->setFrameShape(QFrame::NoFrame);
  // These settings make the list as fast as it can be.
  list_->setUniformItemSizes(true);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setModel(model_.get());
  list_->setItemDelegate(delegate_.get());
  QFont font = list_->font();
  font.setPixelSize(int(tessaluna::platform::NSFont::systemFontSize()));
  list_->setFont(font);
  window_.show();
  letEventsHappen();
  paints_.watch(*list_->viewport());
}

QtList::~QtList() { delete list_; }

void QtList::showFrameAt(int y) {
  list_->verticalScrollBar()->setValue(y);
  // Without this, the list would move what it has drawn and draw only the rest.
  list_->viewport()->update();
  letEventsHappen();
}

}  // namespace bench
