// Lays widgets out in lines, as words in a paragraph: as many a line as its width holds.
#pragma once

#include <QLayout>
#include <vector>

namespace gallery {

class FlowLayout : public QLayout {
 public:
  explicit FlowLayout(int spacing);
  ~FlowLayout() override;

  void addItem(QLayoutItem* item) override;
  int count() const override;
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override { return minimumSize(); }
  QSize minimumSize() const override;
  void setGeometry(const QRect& rect) override;
  Qt::Orientations expandingDirections() const override { return {}; }

 private:
  enum class Moving { No, Yes };
  int layOut(const QRect& rect, Moving moving) const;  // the height that it takes

  std::vector<QLayoutItem*> items_;
};

}  // namespace gallery
