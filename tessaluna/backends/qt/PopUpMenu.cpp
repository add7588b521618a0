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
#include "tessaluna/platform/events/TypeSelect.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"

namespace tessaluna::backend::qt {

namespace {

// A choice is known before the menu has closed, and reported afterwards.
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

// A menu that is searched by typing. Few of Qt's styles ask their menus for that.
class SearchedMenu : public QMenu {
 public:
  using QMenu::QMenu;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    constexpr auto shortcuts = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const bool isSearched =
        style()->styleHint(QStyle::SH_Menu_KeyboardSearch, nullptr, this) || event->modifiers() & shortcuts;
    const double now = static_cast<double>(clock_.elapsed()) / 1000;
    if (isSearched || !search_.takesText(event->text().toStdString(), now)) {
      QMenu::keyPressEvent(event);
      return;
    }
    const QList<QAction*> all = actions();
    std::vector<std::string> titles;
    for (const QAction* action : all) {
      titles.push_back(action->isEnabled() ? action->text().trimmed().replace("&&", "&").toStdString() : std::string());
    }
    const qsizetype current = all.indexOf(activeAction());
    const auto highlighted = current < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(current));
    const auto titleAt = [&](std::size_t index) { return titles[index]; };
    if (const auto found = search_.entryAmong(titles.size(), titleAt, highlighted))
      setActiveAction(all[static_cast<qsizetype>(*found)]);
  }

 private:
  platform::TypeSelect search_{QApplication::keyboardInputInterval() / 1000.0};
  QElapsedTimer clock_ = [] {
    QElapsedTimer started;
    started.start();
    return started;
  }();
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
  // Qt hides a menu first and then reports the choice.
  QObject::connect(menu, &QMenu::aboutToHide, menu, [menu, choice, chosen = std::move(chosen)] {
    QTimer::singleShot(0, menu, [menu, choice, chosen] {
      menu->deleteLater();
      chosen(*choice);
    });
  });
  menu->winId();  // makes its window, which the one below it needs to know
  menu->windowHandle()->setTransientParent(window);
  QAction* over = nullptr;
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entries[i].number == place.entry) over = menu->actions()[static_cast<qsizetype>(i)];
  menu->popup(cornerOf(*menu, place, over));
  if (over) menu->setActiveAction(over);
  return std::make_unique<OpenMenu>(*menu);
}

}  // namespace tessaluna::backend::qt
