// All glyphs of the style kit by family, in the order of its table of routines, with one size and one background for all.
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>
#include <vector>

#include "gallery/FlowLayout.h"
#include "gallery/Pages.h"
#include "gallery/artwork/GlyphCard.h"

namespace gallery {

namespace {

using TessalunaUIKit::Routine;
using TessalunaUIKit::RoutineFamily;

constexpr int smallestGlyph = 12, largestGlyph = 512, firstGlyph = 40;

struct BackgroundChoice {
  const char* name;
  BackgroundKind kind;
};
constexpr BackgroundChoice backgroundChoices[] = {{"Window", BackgroundKind::Palette},
                                                  {"Light", BackgroundKind::Light},
                                                  {"Dark", BackgroundKind::Dark},
                                                  {"Transparent", BackgroundKind::Checkered}};

using Cards = std::vector<GlyphCard*>;

QLabel* makeLabel(const QString& text, const char* role) {
  auto* label = new QLabel(text);
  label->setObjectName(role);
  return label;
}

QWidget* makeSizeControl(const Cards& cards) {
  auto* control = new QWidget;
  auto* row = new QHBoxLayout(control);
  row->setContentsMargins(0, 0, 0, 0);
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setRange(smallestGlyph, largestGlyph);
  slider->setFixedWidth(130);
  slider->setAccessibleName("Size");
  auto* value = makeLabel({}, "label");
  value->setFixedWidth(60);
  row->addWidget(makeLabel("Size", "label"));
  row->addWidget(slider);
  row->addWidget(value);
  QObject::connect(slider, &QSlider::valueChanged, control, [cards, value](int size) {
    value->setText(QString("%1 pt").arg(size));
    for (GlyphCard* card : cards) card->setGlyphSize(size);
  });
  slider->setValue(firstGlyph);
  return control;
}

QWidget* makeGroundControl(const Cards& cards) {
  auto* control = new QWidget;
  auto* row = new QHBoxLayout(control);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(4);
  row->addWidget(makeLabel("Ground", "label"));
  row->addSpacing(4);
  auto* group = new QButtonGroup(control);
  for (const BackgroundChoice& choice : backgroundChoices) {
    auto* button = new QToolButton;
    button->setObjectName("ground");
    button->setText(choice.name);
    button->setAccessibleName(QString("%1 ground").arg(choice.name));
    button->setCheckable(true);
    group->addButton(button);
    row->addWidget(button);
    QObject::connect(button, &QToolButton::toggled, control, [cards, kind = choice.kind](bool isOn) {
      if (!isOn) return;
      for (GlyphCard* card : cards) card->setBackground(kind);
    });
  }
  group->buttons().first()->setChecked(true);
  return control;
}

QWidget* makeFamilyHeading(RoutineFamily family, int count) {
  auto* heading = new QWidget;
  auto* row = new QHBoxLayout(heading);
  row->setContentsMargins(0, 14, 0, 4);
  row->addWidget(makeLabel(QString::fromStdString(std::string(familyName(family))), "family"));
  row->addWidget(makeLabel(QString::number(count), "familyCount"));
  row->addStretch();
  return heading;
}

}  // namespace

QWidget* makeArtworkPage(Report) {
  Cards cards;
  auto* glyphs = new QWidget;
  auto* sections = new QVBoxLayout(glyphs);
  sections->setContentsMargins(0, 0, 26, 26);
  sections->setSpacing(0);
  const std::span<const Routine> all = TessalunaUIKit::routines();
  for (std::size_t i = 0; i < all.size();) {
    auto* section = new QWidget;
    auto* flow = new FlowLayout(section);
    const RoutineFamily family = all[i].family;
    for (; i < all.size() && all[i].family == family; ++i) {
      cards.push_back(new GlyphCard(all[i]));
      flow->addWidget(cards.back());
    }
    sections->addWidget(makeFamilyHeading(family, flow->count()));
    sections->addWidget(section);
  }
  sections->addStretch();

  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  auto* controls = new QHBoxLayout;
  controls->addWidget(makeSizeControl(cards));
  controls->addSpacing(12);
  controls->addWidget(makeGroundControl(cards));
  controls->addStretch();
  column->addLayout(controls);
  auto* scroller = new QScrollArea;
  scroller->setAccessibleName("Glyphs");
  scroller->verticalScrollBar()->setAccessibleName("Place in the glyphs");
  scroller->setWidgetResizable(true);
  scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  scroller->viewport()->setAutoFillBackground(false);
  glyphs->setAutoFillBackground(false);
  scroller->setWidget(glyphs);
  glyphs->setAutoFillBackground(false);
  column->addWidget(scroller, 1);
  return page;
}

}  // namespace gallery
