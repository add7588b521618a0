#include "gallery/look.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

namespace gallery {

namespace {

constexpr auto styleSheet = R"(
#sidebar { background: #f3f3f6; border: none; border-right: 1px solid #e2e2e8; }
#brand { font-size: 17px; font-weight: 600; color: #26262c; padding: 20px 20px 1px 20px; }
#brandLine { font-size: 11px; color: #8b8b96; padding: 0 20px 16px 20px; }
#pageList { background: transparent; border: none; outline: none; padding: 0 10px; font-size: 13px; }
#pageList::item { color: #3c3c44; padding: 6px 8px; border: 2px solid transparent; border-radius: 7px; margin: 1px 0; }
#pageList::item:hover { background: #e9e9ee; }
#pageList::item:selected { background: #dfe6fb; color: #2647b0; }
#pageList::item:focus { border-color: #3f68e0; }
#content { background: #ffffff; }
#pageTitle { font-size: 24px; font-weight: 600; color: #1e1e24; }
#pageSummary { font-size: 13px; color: #7c7c88; }
#family { font-size: 15px; font-weight: 600; color: #2c2c34; }
#familyCount { font-size: 12px; color: #9a9aa6; }
#card { background: #ffffff; border: 1px solid #e6e6ec; border-radius: 10px; }
#cardName { font-size: 12px; font-weight: 600; color: #34343c; }
#cardNote { font-size: 11px; color: #9a9aa6; }
#foot { color: #8b8b96; font-size: 11px; padding: 7px 32px; background: #fafafc; border-top: 1px solid #ececf1; }
#label { font-size: 12px; color: #5c5c68; }
#card QCheckBox { font-size: 11px; color: #5c5c68; spacing: 5px; }
#journal { background: #fafafc; border: 1px solid #e6e6ec; border-radius: 10px; padding: 6px; font-size: 12px; color: #44444c; }
QScrollArea { background: transparent; border: 2px solid transparent; border-radius: 5px; }
QScrollArea:focus { border-color: #3f68e0; }
QToolButton#ground { background: #f3f3f6; border: 1px solid #e2e2e8; color: #5c5c68; font-size: 12px; padding: 5px 12px; }
QToolButton#ground:checked { background: #dfe6fb; border-color: #c3cff5; color: #2647b0; }
QToolButton#ground:focus { border: 2px solid #3f68e0; padding: 4px 11px; }
QScrollBar:vertical { background: transparent; width: 11px; margin: 2px; }
QScrollBar::handle:vertical { background: #d2d2da; border-radius: 3px; min-height: 40px; }
QScrollBar::handle:vertical:hover { background: #b8b8c2; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)";

}  // namespace

void applyLook(QApplication& application) {
  application.setStyle(QStyleFactory::create("Fusion"));
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0xf6f6f8));
  palette.setColor(QPalette::WindowText, QColor(0x2a2a30));
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, QColor(0x2a2a30));
  palette.setColor(QPalette::Button, QColor(0xf3f3f6));
  palette.setColor(QPalette::ButtonText, QColor(0x2a2a30));
  for (const QPalette::ColorRole text : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, text, QColor(0x9a9aa6));
  palette.setColor(QPalette::Highlight, QColor(0x3f68e0));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  application.setPalette(palette);
  application.setStyleSheet(styleSheet);
}

}  // namespace gallery
