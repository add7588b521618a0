// Glyphs in the rows of a table of Qt's. A click on the heart makes a song a favorite.
#include <QApplication>
#include <QHeaderView>
#include <QIcon>
#include <QModelIndex>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>
#include <QTableView>

#include "tessaluna/backends/qt/icons.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

using tessaluna::backend::qt::iconOfDrawing;
using tessaluna::backend::qt::IconRole;
using tessaluna::platform::CGRect;
using TessalunaUIKit::TessalunaStyleKit;

class HeartDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    const bool isSelected = option.state & QStyle::State_Selected;
    if (index.data(Qt::UserRole).toBool())
      heart_.paint(painter, option.rect, Qt::AlignCenter, isSelected ? QIcon::Selected : QIcon::Normal);
  }

 private:
  QIcon heart_ = iconOfDrawing({200, 200}, [](CGRect frame) { TessalunaStyleKit::drawMoodLove(frame, false); },
                               {.role = IconRole::ListText});
};

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::platform::setNeutralsFollowPalette(true);
  QStandardItemModel songs(0, 2);
  for (const char* title : {"Slow Orbit", "Silver Tide", "Night Ferry"})
    songs.appendRow({new QStandardItem(title), new QStandardItem});
  songs.item(1, 1)->setData(true, Qt::UserRole);

  QTableView table;
  table.setModel(&songs);
  table.setItemDelegateForColumn(1, new HeartDelegate(&table));
  table.horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  QObject::connect(&table, &QTableView::clicked, &songs, [&songs](const QModelIndex& index) {
    if (index.column() == 1) songs.setData(index, !index.data(Qt::UserRole).toBool(), Qt::UserRole);
  });
  table.show();
  return QApplication::exec();
}
