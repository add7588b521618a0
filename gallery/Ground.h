// What stands behind a glyph: the palette's ground, a light one, a dark one or, as in picture editors, a checkered one. Widgets
// put upon it lie in its middle.
#pragma once

#include <QWidget>

#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/views/Forward.h"

namespace gallery {

enum class GroundKind { Palette, Light, Dark, Checkered };

// From the color of text on such a ground to its own.
tessaluna::platform::NeutralAxis axisOf(GroundKind kind);

// A view on such a ground: its neutral colors are those of the ground, whatever the palette.
void tintForGround(tessaluna::platform::NSView& view, GroundKind kind);
// A view whose colors are made for its ground: black stays black, and white white.
void keepColors(tessaluna::platform::NSView& view);

class Ground : public QWidget {
 public:
  explicit Ground(QWidget* content);

  GroundKind kind() const { return kind_; }
  void setKind(GroundKind kind);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  GroundKind kind_ = GroundKind::Palette;
};

}  // namespace gallery
