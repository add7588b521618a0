#include "HostWindow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <functional>
#include <utility>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/qt/icons.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"

using TessalunaUIKit::TessalunaStyleKit;

// Hears the actions of the views.
class Listener : public tessaluna::platform::NSObject {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit Listener(std::function<void(int)> goBy) : goBy_(std::move(goBy)) {}
  void previous(NSObject*) { goBy_(-1); }
  void next(NSObject*) { goBy_(1); }

 private:
  std::function<void(int)> goBy_;
};

constexpr tessaluna::platform::Selector selectors[] = {tessaluna::platform::action<&Listener::previous>("previous:"),
                                                       tessaluna::platform::action<&Listener::next>("next:")};
const tessaluna::platform::ClassInfo Listener::staticClassInfo{
    .name = "Listener", .base = &NSObject::staticClassInfo, .selectors = selectors};

HostWindow::HostWindow()
    : title_(new QLabel), listener_(tessaluna::platform::make<Listener>([this](int tracks) { goBy(tracks); })) {
  setWindowTitle("Embedded");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(title_, 0, Qt::AlignCenter);

  auto* transport = new QHBoxLayout;
  layout->addLayout(transport);
  const auto previous = tessaluna::platform::make<TessalunaUIKit::PrevNextButton>(tessaluna::platform::CGRect{0, 0, 24, 24});
  previous->setTarget(listener_);
  previous->setAction("previous:");
  transport->addWidget(new tessaluna::backend::qt::QtViewWidget(previous));

  auto* play = new QPushButton("Play");
  play->setIcon(tessaluna::backend::qt::iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay));
  transport->addWidget(play);
  auto* stop = new QPushButton("Stop");
  stop->setIcon(tessaluna::backend::qt::iconOfDrawing({32, 32}, TessalunaStyleKit::drawStop));
  stop->setEnabled(false);
  transport->addWidget(stop);

  const auto next = tessaluna::platform::make<TessalunaUIKit::PrevNextButton>(tessaluna::platform::CGRect{0, 0, 24, 24});
  next->setNext(true);
  next->setTarget(listener_);
  next->setAction("next:");
  transport->addWidget(new tessaluna::backend::qt::QtViewWidget(next));

  goBy(0);
}

HostWindow::~HostWindow() = default;

void HostWindow::goBy(int tracks) {
  track_ += tracks;
  title_->setText(QString("Track %1").arg(track_));
}
