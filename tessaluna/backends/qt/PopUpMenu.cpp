#include "tessaluna/backends/qt/PopUpMenu.h"

#include <QMenu>
#include <QTimer>
#include <QWindow>

namespace tessaluna::backend::qt {

namespace {

// An ampersand marks a letter to Qt.
QString qtTitle(const std::string& title) { return QString::fromStdString(title).replace('&', "&&"); }

}  // namespace

PopUpMenu::~PopUpMenu() { delete menu_; }

void PopUpMenu::open(QWindow& window, QPoint place, const std::vector<MenuEntry>& entries, Chosen chosen) {
  if (menu_) menu_->hide();
  auto* menu = new QMenu;
  menu_ = menu;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const MenuEntry& entry = entries[i];
    if (entry.isSeparator) {
      menu->addSeparator();
      continue;
    }
    QAction* action = menu->addAction(qtTitle(entry.title));
    action->setData(static_cast<qulonglong>(i));
    action->setEnabled(entry.isEnabled);
    action->setCheckable(entry.isChecked);
    action->setChecked(entry.isChecked);
  }
  // Qt hides a menu first and tells the choice then.
  const auto choice = std::make_shared<std::optional<std::size_t>>();
  QObject::connect(menu, &QMenu::triggered, menu,
                   [choice](const QAction* action) { *choice = static_cast<std::size_t>(action->data().toULongLong()); });
  QObject::connect(menu, &QMenu::aboutToHide, menu, [menu, choice, chosen = std::move(chosen)] {
    QTimer::singleShot(0, menu, [menu, choice, chosen] {
      menu->deleteLater();
      chosen(*choice);
    });
  });
  menu->winId();  // makes its window, which the one below it needs to be told of
  menu->windowHandle()->setTransientParent(&window);
  menu->popup(place);
}

}  // namespace tessaluna::backend::qt
