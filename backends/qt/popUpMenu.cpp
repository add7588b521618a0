#include "backends/qt/popUpMenu.h"

#include <QAction>
#include <QMenu>
#include <QTimer>
#include <memory>

namespace backend::qt {

void popUpMenuAt(QPoint place, const std::vector<MenuEntry>& entries,
                 std::function<void(std::optional<std::size_t>)> chosen) {
  auto* menu = new QMenu;
  const auto result = std::make_shared<std::optional<std::size_t>>();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const MenuEntry& entry = entries[i];
    if (entry.isSeparator) {
      menu->addSeparator();
      continue;
    }
    QAction* action = menu->addAction(QString::fromStdString(entry.title));
    action->setEnabled(entry.isEnabled);
    action->setCheckable(entry.isChecked);
    action->setChecked(entry.isChecked);
    QObject::connect(action, &QAction::triggered, menu, [result, i] { *result = i; });
  }
  // The menu hides before its action is told: what was chosen is known one turn later.
  QObject::connect(menu, &QMenu::aboutToHide, menu, [menu, result, chosen = std::move(chosen)] {
    QTimer::singleShot(0, menu, [menu, result, chosen] {
      menu->deleteLater();
      chosen(*result);
    });
  });
  menu->popup(place);
}

}  // namespace backend::qt
