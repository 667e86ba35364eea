#include "AppKit/Qt/Menus/MenuPopup.h"

#include "AppKit/Qt/Menus/NativeMenu.h"
#include "AppKit/Qt/Panels/PanelWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

MenuPopup* theOpen = nullptr;

/// Below the place, or above where the screen has no room below; beside the screen's edges never.
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

/// Whoever opened the menu by a press may hold the mouse until its release, and the menu then lacks
/// it and the keyboard.
void takeInput(NativeMenu& menu) {
    auto* const retry = new QTimer(&menu);
    QObject::connect(retry, &QTimer::timeout, &menu, [&menu, retry] {
        auto* const window = menu.windowHandle();
        if (!window || !menu.isVisible()) return;
        const bool taken =
            window->setMouseGrabEnabled(true) && window->setKeyboardGrabEnabled(true);
        if (taken) retry->stop();
    });
    using namespace std::chrono_literals;
    retry->start(20ms);
}

} // namespace

MenuPopup::MenuPopup(const std::shared_ptr<NSMenu>& menu) : m_menu(menu) {}

MenuPopup::~MenuPopup() = default;

void MenuPopup::openAt(const QPoint& corner) {
    open([&](const QSize&) { return corner; });
}

void MenuPopup::openBeside(const QRect& place) {
    open([&](const QSize& size) { return cornerBeside(place, size); });
}

bool MenuPopup::isOpen(const NSMenu& menu) { return theOpen && theOpen->m_menu.get() == &menu; }

bool MenuPopup::close(const NSMenu& menu) {
    if (!isOpen(menu) || !theOpen->m_native) return false;
    theOpen->m_native->close();
    return true;
}

bool MenuPopup::isOpen() { return theOpen != nullptr; }

void MenuPopup::open(const std::function<QPoint(const QSize&)>& cornerFor) {
    if (m_menu->itemArray().empty()) return;
    std::shared_ptr<NSMenuItem> chosen;
    m_native = std::make_unique<NativeMenu>(*m_menu, [&](const auto& item) { chosen = item; });
    if (theOpen) close(*theOpen->m_menu);
    auto* const before = std::exchange(theOpen, this);
    takeInput(*m_native);
    m_native->exec(cornerFor(m_native->sizeHint()));
    theOpen = before;
    m_native.reset();
    if (!isOpen()) PanelWindow::menuClosed();

    if (const auto delegate = m_menu->delegate()) delegate->menuDidClose(*m_menu);
    const auto target = chosen ? chosen->target() : nullptr;
    if (target) chosen->action().send(*target, *chosen);
}
