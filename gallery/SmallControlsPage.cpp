// The small glyph controls, alive: press them, drag out and back, let go, or walk to them with the Tab key
// and press space.
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "backends/qt/QtViewWidget.h"
#include "gallery/Pages.h"
#include "uikit/trackrow/CloseButton.h"
#include "uikit/trackrow/PlaybackStatusIcon.h"
#include "uikit/trackrow/PrevNextButton.h"

namespace gallery {

using namespace platform;
using namespace TessalunaUIKit;

namespace {

// The target of the buttons: an action is a selector's name, found in this class's table.
class Clicks : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit Clicks(Report report) : report_(std::move(report)) {}

  void clicked(NSObject* sender) {
    const auto* button = dynamic_cast<const NSButton*>(sender);
    if (!button) return;
    ++count_;
    report_(button->className() + " " + std::to_string(button->tag()) + " clicked, " +
            std::to_string(count_) + (count_ == 1 ? " click" : " clicks") + " in all");
  }

 private:
  static const Selector selectors_[];
  Report report_;
  int count_ = 0;
};

const Selector Clicks::selectors_[] = {action<&Clicks::clicked>("clicked:")};
const ClassInfo Clicks::staticClassInfo{
    .name = "gallery.Clicks", .base = &NSObject::staticClassInfo, .selectors = Clicks::selectors_};

class Shelf {
 public:
  explicit Shelf(Report report) : clicks_(make<Clicks>(std::move(report))) {
    widget_ = new QWidget;
    grid_ = new QGridLayout(widget_);
    grid_->setHorizontalSpacing(28);
    grid_->setVerticalSpacing(20);
    // A target is not kept alive by its buttons: the page keeps it.
    QObject::connect(widget_, &QObject::destroyed, [clicks = clicks_] {});
  }

  void beginRow(const QString& name) {
    ++row_;
    column_ = 1;
    grid_->addWidget(new QLabel(name), row_, 0);
  }

  void add(const Ref<NSView>& view) {
    auto* shown = new backend::qt::QtViewWidget(view);
    shown->setFixedSize(static_cast<int>(view->frame().size.width),
                        static_cast<int>(view->frame().size.height));
    grid_->addWidget(shown, row_, column_++, Qt::AlignCenter);
  }

  template <class Button>
  Ref<Button> addButton(CGFloat size) {
    const auto button = make<Button>(CGRect{0, 0, size, size});
    button->setTag(++lastTag_);
    button->setTarget(clicks_);
    button->setAction("clicked:");
    add(button);
    return button;
  }

  QWidget* finish() {
    grid_->setColumnStretch(7, 1);
    grid_->setRowStretch(row_ + 1, 1);
    return widget_;
  }

 private:
  Ref<Clicks> clicks_;
  QWidget* widget_;
  QGridLayout* grid_;
  int row_ = -1, column_ = 1;
  std::int64_t lastTag_ = 0;
};

}  // namespace

QWidget* makeSmallControlsPage(Report report) {
  Shelf shelf(std::move(report));
  shelf.beginRow("Previous");
  for (const CGFloat size : {14, 24, 48}) shelf.addButton<PrevNextButton>(size);
  shelf.beginRow("Next");
  for (const CGFloat size : {14, 24, 48}) shelf.addButton<PrevNextButton>(size)->setNext(true);
  shelf.beginRow("Previous and next, disabled");
  shelf.addButton<PrevNextButton>(24)->setEnabled(false);
  const auto next = shelf.addButton<PrevNextButton>(24);
  next->setNext(true);
  next->setEnabled(false);
  shelf.beginRow("Close");
  for (const CGFloat size : {16, 24, 48}) shelf.addButton<CloseButton>(size);
  shelf.beginRow("Inverted polarity");
  for (const CGFloat size : {32, 48, 96}) shelf.add(make<PlaybackStatusIcon>(CGRect{0, 0, size, size}));
  return shelf.finish();
}

}  // namespace gallery
