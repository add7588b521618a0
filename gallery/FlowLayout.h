// Widgets side by side at their hinted sizes, in as many rows as the width requires. All widgets of a row are as high as
// the highest of them.
#pragma once

#include <QLayout>
#include <vector>

namespace gallery {

class FlowLayout : public QLayout {
 public:
  explicit FlowLayout(QWidget* parent);
  ~FlowLayout() override;

  void addItem(QLayoutItem* item) override;
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;

  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override { return minimumSize(); }
  QSize minimumSize() const override;
  void setGeometry(const QRect& place) override;

 private:
  // Calls visit(item, its place) for each item, and returns the height that they take.
  template <class Visit>
  int arrange(const QRect& place, Visit visit) const;

  std::vector<QLayoutItem*> items_;
};

}  // namespace gallery
