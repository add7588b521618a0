#include "gallery/look.h"

#include <QEvent>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <algorithm>

#include "tessaluna/platform/graphics/contrast.h"

namespace gallery {

namespace {

// {name} is one of the shades below.
constexpr auto styleSheetOfShades = R"(
#sidebar { background: {side}; border: none; border-right: 1px solid {edge}; }
#brand { font-size: 17px; font-weight: 600; color: {text}; padding: 20px 20px 1px 20px; }
#brandLine { font-size: 11px; color: {note}; padding: 0 20px 16px 20px; }
#pageList { background: transparent; border: none; outline: none; padding: 0 10px; font-size: 13px; }
#pageList::item { color: {text}; padding: 6px 8px; border: 2px solid transparent; border-radius: 7px; margin: 1px 0; }
#pageList::item:hover { background: {hover}; }
#pageList::item:selected { background: {chosen}; color: {chosenText}; }
#pageList::item:focus { border-color: {focus}; }
#content { background: {ground}; }
#pageTitle { font-size: 24px; font-weight: 600; color: {text}; }
#pageSummary { font-size: 13px; color: {note}; }
#family { font-size: 15px; font-weight: 600; color: {text}; }
#familyCount { font-size: 12px; color: {note}; }
#card { background: {ground}; border: 1px solid {edge}; border-radius: 10px; }
#window { background: {side}; border: 1px solid {edge}; }
#cardName { font-size: 12px; font-weight: 600; color: {text}; }
#cardNote { font-size: 11px; color: {note}; }
QWidget[ground="dark"] #cardNote { color: #a2a2ac; }
#foot { color: {note}; font-size: 11px; padding: 7px 32px; background: {raised}; border-top: 1px solid {edge}; }
#label { font-size: 12px; color: {note}; }
#card QCheckBox { font-size: 11px; color: {note}; spacing: 5px; }
#journal { background: {raised}; border: 1px solid {edge}; border-radius: 10px; padding: 6px; font-size: 12px; color: {text}; }
#journal:focus { border: 2px solid {focus}; padding: 5px; }
QScrollArea { background: transparent; border: 2px solid transparent; border-radius: 5px; }
#pageScroller { border: none; }
QScrollArea:focus { border-color: {focus}; }
QToolButton#ground, QPushButton { background: {side}; border: 1px solid {edge}; color: {text}; font-size: 12px; padding: 5px 12px; }
QToolButton#ground:pressed, QPushButton:pressed { background: {hover}; }
QToolButton#ground:checked { background: {chosen}; border-color: {focus}; color: {chosenText}; }
QToolButton#ground:focus, QPushButton:focus { border: 2px solid {focus}; padding: 4px 11px; }
QScrollBar:vertical { background: transparent; width: 11px; margin: 2px; }
QScrollBar::handle:vertical { background: {handle}; border-radius: 3px; min-height: 40px; }
QScrollBar::handle:vertical:hover { background: {note}; }
QScrollBar:horizontal { background: transparent; height: 11px; margin: 2px; }
QScrollBar::handle:horizontal { background: {handle}; border-radius: 3px; min-width: 40px; }
QScrollBar::handle:horizontal:hover { background: {note}; }
QAbstractScrollArea::corner { background: transparent; border: none; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)";

constexpr double contrastOfText = 4.6, contrastOfControls = 3.1;

QColor mixed(const QColor& from, const QColor& to, double share) {
  const auto mix = [share](double a, double b) { return static_cast<float>(a + (b - a) * share); };
  return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()), mix(from.blueF(), to.blueF()));
}

double contrast(const QColor& a, const QColor& b) {
  const auto color = [](const QColor& c) { return tessaluna::backend::Color{c.redF(), c.greenF(), c.blueF(), 1}; };
  return tessaluna::platform::contrastRatio(color(a), color(b));
}

// The color nearest to `from` on the way to `to` that has enough contrast with all the backgrounds.
QColor seenOn(std::initializer_list<QColor> grounds, const QColor& from, const QColor& to, double minContrast) {
  constexpr int steps = 50;
  for (int i = 0; i <= steps; ++i) {
    const QColor color = mixed(from, to, static_cast<double>(i) / steps);
    if (std::ranges::all_of(grounds, [&](const QColor& ground) { return contrast(color, ground) >= minContrast; }))
      return color;
  }
  return to;
}

QString styleSheetFor(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Base), side = palette.color(QPalette::Window);
  const QColor text = palette.color(QPalette::WindowText), highlight = palette.color(QPalette::Highlight);
  const QColor raised = mixed(ground, side, 0.5), chosen = mixed(side, highlight, 0.18);
  struct Shade {
    const char* name;
    QColor color;
  };
  const Shade shades[] = {
      {"ground", ground},
      {"side", side},
      {"raised", raised},
      {"text", text},
      {"note", seenOn({ground, side, raised}, mixed(text, ground, 0.45), text, contrastOfText)},
      {"edge", mixed(side, text, 0.11)},
      {"hover", mixed(side, text, 0.06)},
      {"handle", seenOn({ground}, mixed(text, ground, 0.65), text, contrastOfControls)},
      {"chosen", chosen},
      {"chosenText", seenOn({chosen}, highlight, text, contrastOfText)},
      {"focus", seenOn({ground, side}, highlight, text, contrastOfControls)},
  };
  QString sheet = styleSheetOfShades;
  for (const Shade& shade : shades) sheet.replace(QString("{%1}").arg(shade.name), shade.color.name());
  return sheet;
}

// Fusion's boxes and menus have an outline darker than the window, which is invisible on a dark one.
class BoxStyle : public QProxyStyle {
 public:
  BoxStyle() : QProxyStyle("Fusion") {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element == PE_IndicatorCheckBox) return drawCheckBox(*option, *painter);
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_PanelMenu) drawMenuOutline(*option, *painter);
  }

 private:
  static QRectF boxOf(const QStyleOption& option) { return QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5); }

  static void drawCheckBox(const QStyleOption& option, QPainter& painter) {
    const QColor ground = option.palette.color(QPalette::Base), text = option.palette.color(QPalette::Text);
    const QRectF box = boxOf(option);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        seenOn({ground, option.palette.color(QPalette::Window)}, mixed(text, ground, 0.5), text, contrastOfControls));
    painter.setBrush(option.state & State_Sunken ? mixed(ground, text, 0.15) : ground);
    painter.drawRoundedRect(box, 2.5, 2.5);
    if (option.state & State_On) {
      const auto at = [&](double x, double y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
      };
      const QPointF check[] = {at(0.22, 0.52), at(0.42, 0.74), at(0.78, 0.28)};
      painter.setPen(QPen(text, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter.drawPolyline(check, 3);
    }
    painter.restore();
  }

  static void drawMenuOutline(const QStyleOption& option, QPainter& painter) {
    painter.save();
    painter.setPen(mixed(option.palette.color(QPalette::Window), option.palette.color(QPalette::Text), 0.3));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(boxOf(option));
    painter.restore();
  }
};

struct Colors {
  QRgb window, base, button, text, disabledText, placeholder, highlight, highlightedText, link;
};

constexpr Colors lightColors{.window = 0xfff6f6f8,
                             .base = 0xffffffff,
                             .button = 0xfff3f3f6,
                             .text = 0xff2a2a30,
                             .disabledText = 0xff9a9aa6,
                             .placeholder = 0xff71717c,
                             .highlight = 0xff3f68e0,
                             .highlightedText = 0xffffffff,
                             .link = 0xff2647b0};
constexpr Colors darkColors{.window = 0xff222327,
                            .base = 0xff1a1b1e,
                            .button = 0xff303238,
                            .text = 0xffe6e6ea,
                            .disabledText = 0xff7d7e88,
                            .placeholder = 0xff95969f,
                            .highlight = 0xff3f68e0,
                            .highlightedText = 0xffffffff,
                            .link = 0xff8fa8ff};

QPalette paletteOf(const Colors& colors) {
  // The style derives the other shades of frames and troughs from these two.
  QPalette palette{QColor(colors.button), QColor(colors.window)};
  palette.setColor(QPalette::Base, colors.base);
  palette.setColor(QPalette::AlternateBase, colors.window);
  palette.setColor(QPalette::ToolTipBase, colors.button);
  palette.setColor(QPalette::PlaceholderText, colors.placeholder);
  palette.setColor(QPalette::Highlight, colors.highlight);
  palette.setColor(QPalette::HighlightedText, colors.highlightedText);
  palette.setColor(QPalette::Link, colors.link);
  for (const QPalette::ColorRole text :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(text, colors.text);
    palette.setColor(QPalette::Disabled, text, colors.disabledText);
  }
  return palette;
}

}  // namespace

Look::Look(QApplication& application, Theme theme) : application_(application) {
  QApplication::setStyle(new BoxStyle);
  switch (theme) {
    case Theme::Desktop: break;
    case Theme::Light: QApplication::setPalette(paletteOf(lightColors)); break;
    case Theme::Dark: QApplication::setPalette(paletteOf(darkColors)); break;
  }
  application.installEventFilter(this);
  update();
}

bool Look::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange && receiver == &application_) update();
  return QObject::eventFilter(receiver, event);
}

void Look::update() {
  const QString sheet = styleSheetFor(QApplication::palette());
  if (sheet != application_.styleSheet()) application_.setStyleSheet(sheet);
}

}  // namespace gallery
