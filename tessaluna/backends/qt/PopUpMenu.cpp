#include "tessaluna/backends/qt/PopUpMenu.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMenu>
#include <QStyle>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/icons.h"
#include "tessaluna/backends/qt/keyTranslation.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"

namespace tessaluna::backend::qt {

namespace {

// A choice is known before the menu has gone, and told afterwards.
using Choice = std::shared_ptr<std::optional<std::size_t>>;

QString qtTitle(const MenuEntry& entry) {
  constexpr int spacesPerLevel = 3;
  QString title(entry.indentation * spacesPerLevel, ' ');
  title += QString::fromStdString(entry.title).replace('&', "&&");  // an ampersand marks a letter to Qt
  if (!entry.keyEquivalent.empty()) {
    const CommandKey commandKey = QtBackend::current().commandKey();
    title += '\t' + shortcutTextOf(entry.keyEquivalent, entry.keyEquivalentModifiers, commandKey);
  }
  return title;
}

// Qt's actions are checked or not; what is mixed shows where an image would.
QIcon iconOf(const MenuEntry& entry) {
  if (entry.image || entry.mark != MenuMark::Dash) return icon(entry.image);
  return iconOfDrawing({16, 16}, [](platform::CGRect) {
    platform::NSColor::controlTextColor()->setFill();
    platform::NSRectFill({4, 7, 8, 2});
  });
}

// A menu in which typing goes to the entry that begins with what was typed. Few of Qt's styles ask their menus for that.
class SearchedMenu : public QMenu {
 public:
  using QMenu::QMenu;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (style()->styleHint(QStyle::SH_Menu_KeyboardSearch, nullptr, this) || !extendTyped(*event)) {
      QMenu::keyPressEvent(event);
      return;
    }
    QAction* found = findEntry(typed_, typed_.size() > 1 ? 0 : 1);
    // The same letter again and again goes from entry to entry.
    if (!found && typed_.count(typed_[0]) == typed_.size()) found = findEntry(typed_[0], 1);
    if (found) setActiveAction(found);
  }

 private:
  // False for a key that is not for the search.
  bool extendTyped(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.isEmpty() || !text[0].isPrint()) return false;
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    if (!sinceKey_.isValid() || sinceKey_.elapsed() > QApplication::keyboardInputInterval()) typed_.clear();
    if (typed_.isEmpty() && text == " ") return false;  // which chooses
    sinceKey_.start();
    typed_ += text;
    return true;
  }
  // The first that begins so, looked for from the current entry or from the one after it, and once around.
  QAction* findEntry(const QString& start, qsizetype fromCurrent) const {
    const QList<QAction*> all = actions();
    const qsizetype current = all.indexOf(activeAction());
    for (qsizetype i = 0; i < all.size(); ++i) {
      QAction* action = all[(std::max<qsizetype>(current + fromCurrent, 0) + i) % all.size()];
      const QString title = action->text().trimmed().replace("&&", "&");
      if (action->isEnabled() && !action->isSeparator() && title.startsWith(start, Qt::CaseInsensitive)) return action;
    }
    return nullptr;
  }

  QString typed_;
  QElapsedTimer sinceKey_;
};

void fill(QMenu& menu, const std::vector<MenuEntry>& entries, const Choice& choice) {
  for (const MenuEntry& entry : entries) {
    if (entry.isSeparator) {
      menu.addSeparator();
      continue;
    }
    QAction* action =
        entry.hasSubmenu ? menu.addMenu(new SearchedMenu(qtTitle(entry), &menu)) : menu.addAction(qtTitle(entry));
    action->setIcon(iconOf(entry));
    action->setIconVisibleInMenu(true);
    action->setEnabled(entry.isEnabled);
    action->setCheckable(entry.mark == MenuMark::Check);
    action->setChecked(entry.mark == MenuMark::Check);
    if (entry.hasSubmenu) fill(*action->menu(), entry.submenu, choice);
    else QObject::connect(action, &QAction::triggered, &menu, [choice, number = entry.number] { *choice = number; });
  }
}

// Where the menu's upper left corner belongs.
QPoint cornerOf(const QMenu& menu, const MenuPlace& place, const QAction* over) {
  const QPoint upperLeft = qtPointOf({CGRectGetMinX(place.over), CGRectGetMaxY(place.over)});
  if (!over) return qtPointOf(place.over.origin);
  const QRect entry = menu.actionGeometry(const_cast<QAction*>(over));
  const int room = static_cast<int>(place.over.size.height) - entry.height();
  return upperLeft + QPoint(0, std::max(0, room / 2) - entry.top());
}

class OpenMenu : public NativeMenu {
 public:
  explicit OpenMenu(QMenu& menu) : menu_(&menu) {}
  void close() override {
    if (menu_) menu_->hide();
  }

 private:
  QPointer<QMenu> menu_;
};

}  // namespace

PopUpMenu::~PopUpMenu() { delete menu_; }

std::unique_ptr<NativeMenu> PopUpMenu::open(QWindow* window, const MenuPlace& place, const std::vector<MenuEntry>& entries,
                                            Chosen chosen) {
  if (menu_) menu_->hide();
  auto* menu = new SearchedMenu;
  menu_ = menu;
  const auto choice = std::make_shared<std::optional<std::size_t>>();
  fill(*menu, entries, choice);
  menu->setMinimumWidth(static_cast<int>(std::ceil(place.minimumWidth)));
  // Qt hides a menu first and tells the choice then.
  QObject::connect(menu, &QMenu::aboutToHide, menu, [menu, choice, chosen = std::move(chosen)] {
    QTimer::singleShot(0, menu, [menu, choice, chosen] {
      menu->deleteLater();
      chosen(*choice);
    });
  });
  menu->winId();  // makes its window, which the one below it needs to be told of
  menu->windowHandle()->setTransientParent(window);
  QAction* over = nullptr;
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entries[i].number == place.entry) over = menu->actions()[static_cast<qsizetype>(i)];
  menu->popup(cornerOf(*menu, place, over));
  if (over) menu->setActiveAction(over);
  return std::make_unique<OpenMenu>(*menu);
}

}  // namespace tessaluna::backend::qt
