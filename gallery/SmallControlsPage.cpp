// The small glyph controls at work: press them, drag out and back, release, or move to them with the Tab key and press Space.
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "gallery/BackgroundPanel.h"
#include "gallery/FlowLayout.h"
#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/Shelf.h"
#include "gallery/controlNames.h"
#include "gallery/parts.h"
#include "gallery/small_controls/ControlReporter.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/uikit/trackrow/CloseButton.h"
#include "tessaluna/uikit/trackrow/PlaybackStatusIcon.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

enum class Ability { Enabled, Disabled };

Ref<NSControl> makePrevNext(CGRect frame, bool isNext) {
  const auto button = make<PrevNextButton>(frame);
  button->setNext(isNext);
  button->setAction(isNext ? "showNext:" : "showPrevious:");
  return button;
}
Ref<NSView> makePrevious(CGRect frame) { return makePrevNext(frame, false); }
Ref<NSView> makeNext(CGRect frame) { return makePrevNext(frame, true); }
Ref<NSView> makeClose(CGRect frame) {
  const auto button = make<CloseButton>(frame);
  button->setAction("closeItem:");
  return button;
}
Ref<NSView> makeStatus(CGRect frame) { return make<PlaybackStatusIcon>(frame); }

struct Exhibit {
  const char* name;  // in reports; one word
  const char* title;
  const char* note;
  Ref<NSView> (*make)(CGRect frame);
  CGFloat smallSize;
  Ability ability = Ability::Enabled;
};

constexpr CGFloat largeSize = 56;
constexpr Exhibit exhibits[] = {
    {"previous", "PrevNextButton", "to the left", makePrevious, 16},
    {"next", "PrevNextButton", "to the right", makeNext, 16},
    {"previous-disabled", "PrevNextButton", "to the left, disabled", makePrevious, 16, Ability::Disabled},
    {"next-disabled", "PrevNextButton", "to the right, disabled", makeNext, 16, Ability::Disabled},
    {"close", "CloseButton", "removes the item beside it", makeClose, 16},
    {"close-disabled", "CloseButton", "disabled: it looks the same", makeClose, 16, Ability::Disabled},
    {"status", "PlaybackStatusIcon", "inverted polarity", makeStatus, 20},
};

QWidget* makeControl(const Exhibit& exhibit, CGFloat size, const std::string& name, const Ref<ControlReporter>& reporter) {
  const Ref<NSView> view = exhibit.make({0, 0, size, size});
  if (const auto control = std::dynamic_pointer_cast<NSControl>(view)) {
    control->setTarget(reporter);
    control->setEnabled(exhibit.ability == Ability::Enabled);
    reporter->nameControl(*control, name);
  }
  auto* widget = new tessaluna::backend::qt::QtViewWidget(view);
  widget->setFixedSize(static_cast<int>(size), static_cast<int>(size));
  nameControl(*widget, name);
  return widget;
}

QWidget* makeCard(const Exhibit& exhibit, const Ref<ControlReporter>& reporter) {
  QWidget* card = makePanel("card");
  auto* column = new QVBoxLayout(card);
  column->setContentsMargins(8, 8, 8, 12);
  column->setSpacing(3);
  auto* controls = new QWidget;
  auto* row = new QHBoxLayout(controls);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(28);
  row->addWidget(makeControl(exhibit, largeSize, exhibit.name + std::string("-large"), reporter));
  row->addWidget(makeControl(exhibit, exhibit.smallSize, exhibit.name, reporter));
  auto* background = new BackgroundPanel(controls);
  background->setMinimumSize(186, 100);
  column->addWidget(background);
  auto* title = new QLabel(exhibit.title);
  title->setObjectName("cardName");
  column->addSpacing(5);
  column->addWidget(title);
  column->addWidget(makeNote(exhibit.note));
  return card;
}

}  // namespace

QWidget* makeSmallControlsPage(Report report) {
  auto* journal = new Journal;
  const auto reporter = make<ControlReporter>(journal->addingTo(std::move(report)));
  auto* page = new QWidget;
  // Controls do not keep their target alive, so the page does.
  QObject::connect(page, &QObject::destroyed, [reporter] {});
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->setSpacing(14);
  auto* cards = new QWidget;
  auto* flow = new FlowLayout(cards);
  for (const Exhibit& exhibit : exhibits) flow->addWidget(makeCard(exhibit, reporter));
  // The reports get the room that the cards leave.
  constexpr int mostOfTheRoom = 1000;
  column->addWidget(new Shelf(cards, "Small controls"), mostOfTheRoom);
  column->addWidget(makeHeading("Reported"));
  journal->setMinimumHeight(60);
  column->addWidget(journal, 1);
  return page;
}

}  // namespace gallery
