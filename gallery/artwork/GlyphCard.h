// One glyph with its name and a check box for each of its flags.
#pragma once

#include <QWidget>

#include "gallery/Ground.h"
#include "tessaluna/platform/foundation/Reference.h"
#include "tessaluna/uikit/stylekit/Routines.h"

namespace gallery {

class GlyphView;

class GlyphCard : public QWidget {
 public:
  explicit GlyphCard(const TessalunaUIKit::Routine& routine);

  void setGlyphSize(int size);
  void setGround(GroundKind kind);

 private:
  tessaluna::platform::Ref<GlyphView> glyph_;
  Ground* ground_;
};

}  // namespace gallery
