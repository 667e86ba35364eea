#include "AppKit/TrayMenu+Private.h"

#include "AppKit/KeyEquivalent+Private.h"
#include "AppKit/NSImage+Private.h"

#include <QSystemTrayIcon>

namespace {

void choose(const std::shared_ptr<NSMenuItem>& item) {
    if (const auto target = item->target()) item->action().send(*target, *item);
}

/// The toolkit hands the first ampersand on as the mark of a letter, even a doubled one. In a text
/// that has one that is to be seen, the mark stands at the beginning.
QString textOf(const NSMenuItem& item) {
    const auto title = QString::fromStdString(item.title());
    return title.contains('&') ? '&' + title : title;
}

void copy(const NSMenu& menu, QMenu& to) {
    for (const auto& item : menu.itemArray()) {
        if (item->isSeparatorItem()) {
            to.addSeparator();
            continue;
        }
        auto* const action = to.addAction(textOf(*item));
        action->setEnabled(item->isEnabled());
        action->setShortcut(keySequenceOf(*item));
        if (item->image()) action->setIcon(inkIconFrom(*item->image()));
        if (item->submenu()) {
            auto* const submenu = new QMenu(&to);
            copy(*item->submenu(), *submenu);
            action->setMenu(submenu);
        } else {
            // The tray may wait for its call to return, and what is chosen may stay open for long.
            QObject::connect(
                action, &QAction::triggered, &to, [item] { choose(item); }, Qt::QueuedConnection);
        }
    }
}

} // namespace

void TrayMenu::offer(const NSMenu& menu, QSystemTrayIcon& icon) {
    m_copy.clear();
    qDeleteAll(m_copy.findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
    copy(menu, m_copy);
    icon.setContextMenu(&m_copy);
    const bool isTaken = m_copy.platformMenu(); // By a tray on the bus alone.
    if (!isTaken) icon.setContextMenu(nullptr);
}
