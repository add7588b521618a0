#include "tessaluna/backends/qt/systemColors.h"

#include <QGuiApplication>
#include <QPalette>

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend::qt {

Color colorOf(const QColor& color) { return {color.redF(), color.greenF(), color.blueF(), color.alphaF()}; }

namespace {

// Selected text keeps its own color here, where Qt inverts it: what is under it must stay near the ground.
Color selectionBehindText(const QPalette& palette, QPalette::ColorRole role) {
  const double share = role == QPalette::Highlight ? 0.35 : 0.15;
  const QColor ground = palette.color(QPalette::Active, QPalette::Base);
  const QColor highlight = palette.color(QPalette::Active, role);
  const auto mixed = [share](double a, double b) { return a + share * (b - a); };
  return {mixed(ground.redF(), highlight.redF()), mixed(ground.greenF(), highlight.greenF()),
          mixed(ground.blueF(), highlight.blueF()), 1};
}

}  // namespace

Color systemColorOf(SystemColor color) {
  const QPalette palette = QGuiApplication::palette();
  const auto active = [&](QPalette::ColorRole role) { return colorOf(palette.color(QPalette::Active, role)); };
  switch (color) {
    case SystemColor::ControlText: return active(QPalette::WindowText);
    case SystemColor::DisabledControlText: return colorOf(palette.color(QPalette::Disabled, QPalette::WindowText));
    case SystemColor::PlaceholderText: return active(QPalette::PlaceholderText);
    case SystemColor::AlternateSelectedControl: return active(QPalette::Highlight);
    case SystemColor::AlternateSelectedControlText: return active(QPalette::HighlightedText);
    case SystemColor::SelectedTextBackground: return selectionBehindText(palette, QPalette::Highlight);
    // Without the highlight's hue: the desktops' inactive highlight is often the active one.
    case SystemColor::UnemphasizedSelectedTextBackground: return selectionBehindText(palette, QPalette::Text);
    case SystemColor::Control: return active(QPalette::Button);
    case SystemColor::ControlBackground: return active(QPalette::Base);
    case SystemColor::WindowBackground: return active(QPalette::Window);
    case SystemColor::KeyboardFocusIndicator: return active(QPalette::Highlight);
  }
  platform::unreachable();
}

}  // namespace tessaluna::backend::qt
