#include "gallery/artwork/GlyphCard.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

#include "gallery/artwork/GlyphView.h"
#include "gallery/parts.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

namespace {

constexpr int minWidth = 168, minStage = 76;

}  // namespace

GlyphCard::GlyphCard(const TessalunaUIKit::Routine& routine) : glyph_(tessaluna::platform::make<GlyphView>(routine)) {
  setPanelLook(*this, "card");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(8, 8, 8, 10);
  column->setSpacing(6);
  auto* glyph = new tessaluna::backend::qt::QtViewWidget(glyph_);
  glyph->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  background_ = new BackgroundPanel(glyph);
  background_->setMinimumSize(minWidth - 18, minStage);
  column->addWidget(background_);

  auto* name = new QLabel(QString::fromStdString(routine.member()));
  name->setObjectName("cardName");
  name->setTextInteractionFlags(Qt::TextSelectableByMouse);
  name->setFocusPolicy(Qt::NoFocus);
  column->addWidget(name);

  for (std::size_t i = 0; i < routine.flags.size(); ++i) {
    const TessalunaUIKit::RoutineFlag& flag = routine.flags[i];
    auto* box = new QCheckBox(QString::fromUtf8(flag.name.data(), static_cast<qsizetype>(flag.name.size())));
    // Several cards have a flag of this name.
    box->setAccessibleName(QString::fromStdString(routine.member() + " ") + box->text());
    box->setChecked(flag.isOnByDefault);
    connect(box, &QCheckBox::toggled, this, [this, i](bool isOn) { glyph_->setFlag(i, isOn); });
    column->addWidget(box);
  }
  column->addStretch();
}

void GlyphCard::setBackground(BackgroundKind kind) {
  background_->setKind(kind);
  glyph_->setBackground(kind);
}

void GlyphCard::setGlyphSize(int size) {
  glyph_->setGlyphSize(size);
  updateGeometry();
}

}  // namespace gallery
