// One glyph with its name and a check box for each of its flags.
#pragma once

#include <QWidget>

#include "gallery/BackgroundPanel.h"
#include "tessaluna/platform/foundation/Reference.h"
#include "tessaluna/uikit/stylekit/Routines.h"

namespace gallery {

class GlyphView;

class GlyphCard : public QWidget {
 public:
  explicit GlyphCard(const TessalunaUIKit::Routine& routine);

  void setGlyphSize(int size);
  void setBackground(BackgroundKind kind);

 private:
  tessaluna::platform::Ref<GlyphView> glyph_;
  BackgroundPanel* background_;
};

}  // namespace gallery
