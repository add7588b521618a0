#include "HostWindow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/qt/connectAction.h"
#include "tessaluna/backends/qt/icons.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"

using tessaluna::backend::qt::iconOfDrawing;
using tessaluna::backend::qt::IconRole;
using TessalunaUIKit::TessalunaStyleKit;

HostWindow::HostWindow() : title_(new QLabel) {
  setWindowTitle("Embedded");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(title_, 0, Qt::AlignCenter);

  auto* transport = new QHBoxLayout;
  layout->addLayout(transport);
  const auto previous = tessaluna::platform::make<TessalunaUIKit::PrevNextButton>(tessaluna::platform::CGRect{0, 0, 24, 24});
  tessaluna::backend::qt::connectAction(*previous, this, [this] { goBy(-1); });
  auto* previousWidget = new tessaluna::backend::qt::QtViewWidget(previous);
  previousWidget->setAccessibleName("Previous");
  transport->addWidget(previousWidget);

  auto* play = new QPushButton("Play");
  play->setIcon(iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay, {.role = IconRole::ButtonText}));
  transport->addWidget(play);
  auto* stop = new QPushButton("Stop");
  stop->setIcon(iconOfDrawing({32, 32}, TessalunaStyleKit::drawStop, {.role = IconRole::ButtonText}));
  stop->setEnabled(false);
  transport->addWidget(stop);

  const auto next = tessaluna::platform::make<TessalunaUIKit::PrevNextButton>(tessaluna::platform::CGRect{0, 0, 24, 24});
  next->setNext(true);
  tessaluna::backend::qt::connectAction(*next, this, [this] { goBy(1); });
  auto* nextWidget = new tessaluna::backend::qt::QtViewWidget(next);
  nextWidget->setAccessibleName("Next");
  transport->addWidget(nextWidget);
  next->setTintColor(tessaluna::platform::NSColor::alternateSelectedControlColor());

  goBy(0);
}

void HostWindow::goBy(int tracks) {
  track_ += tracks;
  title_->setText(QString("Track %1").arg(track_));
}
