// Any view as a widget, in a layout of the program's own:
//
//   auto button = platform::make<TessalunaUIKit::CloseButton>(platform::CGRect{0, 0, 16, 16});
//   layout->addWidget(new backend::qt::QtViewWidget(button));
//
// All views below one top-level widget are in one window, that of their host: they have one first responder between them,
// which has the keyboard while the widget that it is in has Qt's focus. The Tab chain leads into the view, along everything in
// it that takes keys, and out again. The widget's place sets the view's frame. Where the view is not opaque, it shows what Qt
// paints below. While the widget is disabled, so is every control in the view.
#pragma once

#include <QPointer>
#include <QWidget>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::backend::qt {

class EmbeddingHost;

class QtViewWidget : public QWidget {
  Q_OBJECT

 public:
  // The view must be in no window; it enters its host's when the widget is first shown. A null view stops the program.
  explicit QtViewWidget(platform::Ref<platform::NSView> view, QWidget* parent = nullptr);
  ~QtViewWidget() override;

  const platform::Ref<platform::NSView>& view() const { return view_; }

  // The intrinsic size of the view; where it has none, the size of its first frame. The size policy is the view's,
  // too, until the program sets one: an intrinsic height is kept, a width may grow.
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  friend class EmbeddingHost;
  void enterHost();
  void leaveHost();
  void sizeMayHaveChanged();
  void enabledDidChange();
  EmbeddingHost* hostHere() const;
  bool passFocusOn(FocusStep step) { return QWidget::focusNextPrevChild(step == FocusStep::Next); }

  platform::Ref<platform::NSView> view_;
  QSizePolicy ownPolicy_;         // as the view has it
  QPointer<EmbeddingHost> host_;  // null before the widget is first shown, and after the top-level widget was destroyed
  bool isPressed_ = false;        // with a button of the mouse, as Qt says
};

}  // namespace tessaluna::backend::qt
