// A panel behind a glyph or a control: the palette's background, a light one, a dark one or, as in picture editors, a
// checkered one. Its content is in the middle.
#pragma once

#include <QWidget>

#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/views/Forward.h"

namespace gallery {

enum class BackgroundKind { Palette, Light, Dark, Checkered };

// From the color of text on such a background to the background's own color.
tessaluna::platform::NeutralAxis axisOf(BackgroundKind kind);

// For a view on such a background: its neutral colors fit the background, whatever the palette.
void tintForBackground(tessaluna::platform::NSView& view, BackgroundKind kind);
// For a view whose colors are made for its background: black stays black, and white stays white.
void keepColors(tessaluna::platform::NSView& view);

class BackgroundPanel : public QWidget {
 public:
  explicit BackgroundPanel(QWidget* content);

  BackgroundKind kind() const { return kind_; }
  void setKind(BackgroundKind kind);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  BackgroundKind kind_ = BackgroundKind::Palette;
};

}  // namespace gallery
