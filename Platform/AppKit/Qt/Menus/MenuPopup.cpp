#include "AppKit/Qt/Menus/MenuPopup.h"

#include "AppKit/Qt/Panels/PanelWindow.h"

#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>

namespace {

struct Popup {
    const NSMenu& menu;
    QMenu* native;
};
Popup* theOpen = nullptr;

/// Below the place, or above where the screen has no room below; always within the screen's sides.
QPoint cornerBeside(const QRect& place, const QSize& size) {
    const auto* screen = QGuiApplication::screenAt(place.center());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return place.bottomLeft();
    const QRect room = screen->geometry();
    const int below = place.y() + place.height();
    const bool fits = below + size.height() <= room.y() + room.height();
    const int y = fits ? below : place.y() - size.height();
    return {std::max(std::min(place.x(), room.x() + room.width() - size.width()), room.x()),
            std::max(y, room.y())};
}

/// Tries until the menu has the mouse and the keyboard: whoever opened it by a press may hold them
/// until the release.
void takeInput(QMenu& menu) {
    auto* const retry = new QTimer(&menu);
    QObject::connect(retry, &QTimer::timeout, &menu, [&menu, retry] {
        auto* const window = menu.windowHandle();
        if (menu.testAttribute(Qt::WA_DontShowOnScreen)) return retry->stop(); // It is given them.
        if (!window || !menu.isVisible()) return;
        const bool taken =
            window->setMouseGrabEnabled(true) && window->setKeyboardGrabEnabled(true);
        if (taken) retry->stop();
    });
    using namespace std::chrono_literals;
    retry->start(20ms);
}

template <class CornerFor>
void open(const std::shared_ptr<NSMenu>& menu, const CornerFor& cornerFor) {
    if (menu->itemArray().empty()) return;
    std::shared_ptr<NSMenuItem> chosen;
    auto native = nativeMenu(*menu, [&](const auto& item) { chosen = item; });
    if (theOpen) close(theOpen->menu);
    Popup popup{*menu, native.get()};
    auto* const before = std::exchange(theOpen, &popup);
    takeInput(*native);
    native->exec(cornerFor(native->sizeHint()));
    theOpen = before;
    native.reset();
    if (!isAnyMenuOpen()) tellPanelsOfClosedMenu();

    if (const auto delegate = menu->delegate()) delegate->menuDidClose(*menu);
    const auto target = chosen ? chosen->target() : nullptr;
    if (target) chosen->action().send(*target, *chosen);
}

} // namespace

void openMenuAt(const std::shared_ptr<NSMenu>& menu, const QPoint& corner) {
    open(menu, [&](const QSize&) { return corner; });
}

void openMenuBeside(const std::shared_ptr<NSMenu>& menu, const QRect& place) {
    open(menu, [&](const QSize& size) { return cornerBeside(place, size); });
}

bool isOpen(const NSMenu& menu) { return theOpen && &theOpen->menu == &menu; }

bool close(const NSMenu& menu) {
    if (!isOpen(menu)) return false;
    theOpen->native->close();
    return true;
}

bool isAnyMenuOpen() { return theOpen != nullptr; }
