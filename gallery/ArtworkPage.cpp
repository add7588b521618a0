// All glyphs of the style kit by family, with their flags to switch, at any size and on three grounds.
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSlider>
#include <QVBoxLayout>
#include <memory>
#include <optional>
#include <vector>

#include "backends/qt/QtViewWidget.h"
#include "gallery/FlowLayout.h"
#include "gallery/GlyphView.h"
#include "gallery/Pages.h"

namespace gallery {

using namespace platform;
using namespace TessalunaUIKit;

namespace {

constexpr int smallestSize = 12, largestSize = 512, firstSize = 64;

// A glyph with its name and the check boxes of its flags.
struct Card {
  Ref<GlyphView> view;
  QWidget* shown = nullptr;

  void setGlyphSize(int size) const {
    view->setGlyphSize(size);
    shown->setFixedSize(static_cast<int>(view->frame().size.width),
                        static_cast<int>(view->frame().size.height));
  }
};

QWidget* makeCard(const Routine& routine, std::vector<Card>& cards) {
  auto* widget = new QWidget;
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(8, 8, 8, 8);
  column->setSpacing(4);
  Card card{.view = make<GlyphView>(routine)};
  card.shown = new backend::qt::QtViewWidget(card.view);
  card.setGlyphSize(firstSize);
  column->addWidget(card.shown, 0, Qt::AlignHCenter);
  auto* name = new QLabel(QString::fromStdString(routine.member()));
  name->setAlignment(Qt::AlignHCenter);
  name->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addWidget(name);
  for (std::size_t i = 0; i < routine.flags.size(); ++i) {
    const RoutineFlag& flag = routine.flags[i];
    auto* box = new QCheckBox(QString::fromUtf8(flag.name.data(), static_cast<qsizetype>(flag.name.size())));
    box->setChecked(flag.isOnByDefault);
    QObject::connect(box, &QCheckBox::toggled, widget,
                     [view = card.view, i](bool isOn) { view->setFlag(i, isOn); });
    column->addWidget(box, 0, Qt::AlignHCenter);
  }
  column->addStretch();
  cards.push_back(std::move(card));
  return widget;
}

}  // namespace

QWidget* makeArtworkPage(Report) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);

  auto* bar = new QHBoxLayout;
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setRange(smallestSize, largestSize);
  slider->setValue(firstSize);
  auto* size = new QLabel;
  size->setMinimumWidth(64);
  auto* ground = new QComboBox;
  ground->addItems({"Light ground", "Dark ground", "Checkered ground"});
  bar->addWidget(new QLabel("Size"));
  bar->addWidget(slider, 1);
  bar->addWidget(size);
  bar->addWidget(ground);
  column->addLayout(bar);

  auto* content = new QWidget;
  auto* families = new QVBoxLayout(content);
  const auto cards = std::make_shared<std::vector<Card>>();
  FlowLayout* flow = nullptr;
  std::optional<RoutineFamily> family;
  for (const Routine& routine : routines()) {
    if (family != routine.family) {
      family = routine.family;
      const std::string_view name = familyName(routine.family);
      auto* heading = new QLabel(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
      heading->setProperty("isHeading", true);
      families->addWidget(heading);
      auto* holder = new QWidget;
      flow = new FlowLayout(8);
      holder->setLayout(flow);
      families->addWidget(holder);
    }
    flow->addWidget(makeCard(routine, *cards));
  }
  families->addStretch();
  auto* scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidget(content);
  column->addWidget(scroll, 1);

  const auto showSize = [size, cards](int points) {
    size->setText(QString::number(points) + " points");
    for (const Card& card : *cards) card.setGlyphSize(points);
  };
  QObject::connect(slider, &QSlider::valueChanged, page, showSize);
  QObject::connect(ground, &QComboBox::currentIndexChanged, page, [cards](int index) {
    for (const Card& card : *cards) card.view->setGround(static_cast<Ground>(index));
  });
  showSize(firstSize);
  return page;
}

}  // namespace gallery
