#include "WindowServer/Wayland/Input/Keyboard.h"

#include "WindowServer/Wayland/Windows/StagedWindows.h"
#include "WindowServer/Wayland/Windows/Stages.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

namespace WindowServer::Wayland {

Keyboard::Keyboard(const Connection& connection, const Stages& stages, StagedWindows& windows)
    : m_connection(connection), m_stages(stages), m_windows(windows) {
    QObject::connect(&m_repeat, &QTimer::timeout, &m_repeat, [this] {
        m_repeat.setInterval(m_repeatPause);
        send(QEvent::KeyPress, m_repeated, true);
    });
}

void Keyboard::connectTo(wl_seat* seat) {
    m_keyboard.reset(wl_seat_get_keyboard(seat));
    static const wl_keyboard_listener listener = {.keymap = Tell<&Keyboard::load>(),
                                                  .enter = Tell<&Keyboard::enter>(),
                                                  .leave = Tell<&Keyboard::leave>(),
                                                  .key = Tell<&Keyboard::key>(),
                                                  .modifiers = Tell<&Keyboard::update>(),
                                                  .repeat_info = Tell<&Keyboard::setRepeat>()};
    wl_keyboard_add_listener(m_keyboard.get(), &listener, this);
}

void Keyboard::load(uint32_t, int file, uint32_t length) { m_keymap.load(file, length); }

void Keyboard::enter(uint32_t, wl_surface* surface, wl_array*) { m_focus = surface; }

void Keyboard::leave(uint32_t, wl_surface*) {
    m_focus = nullptr;
    m_keymap.update(0, 0, 0, 0); // Nobody tells what is let go meanwhile.
}

void Keyboard::update(uint32_t, uint32_t depressed, uint32_t latched, uint32_t locked,
                      uint32_t layout) {
    m_keymap.update(depressed, latched, locked, layout);
}

void Keyboard::setRepeat(int perSecond, int delay) {
    m_repeatDelay = std::chrono::milliseconds(delay);
    m_repeatPause = std::chrono::milliseconds(perSecond > 0 ? 1000 / perSecond : 0);
}

QWidget* Keyboard::popup() const {
    QWidget* const popup = QApplication::activePopupWidget();
    return m_windows.has(popup) ? popup : nullptr;
}

/// A menu above an ordinary window of ours needs no help: the toolkit hands it that one's keys, and
/// would close it if they went elsewhere.
bool Keyboard::isWanted() const {
    if (m_windows.wantingKeyboard()) return true;
    const QWidget* const menu = popup();
    return menu && (m_holder || !QGuiApplication::focusWindow());
}

/// KWin hands the keyboard to a stage that is clicked, though it wants none. It gets it back as one
/// that does want it comes and goes.
void Keyboard::follow() {
    const bool isMislaid = m_stages.of(m_focus);
    const bool isClosed = m_holder && m_holder->isClosed();
    if (isClosed || (m_hadKeys && !hasKeys())) {
        m_holder.reset();
        m_repeat.stop();
        if (!isMislaid && !isClosed) lose(); // Else the window that had them has them back at once.
    }
    const bool wanted = (isWanted() || isMislaid) && !m_stages.all().empty();
    if (wanted && !m_holder) {
        const QWidget* const asking =
            m_windows.wantingKeyboard() ? m_windows.wantingKeyboard() : popup();
        const Stage* const stage =
            asking ? m_stages.at(QPointF(asking->geometry().center())) : nullptr;
        m_holder = std::make_unique<KeyboardHolder>(
            m_connection, stage ? stage->output() : m_stages.all().front()->output());
    }
    if (!wanted && m_holder) {
        m_holder.reset();
        deactivate();
    }
    m_hadKeys = hasKeys();
    // The toolkit may hear late that another window of ours has lost the keyboard, and take that
    // for this one's loss.
    if (m_hadKeys) activate();
}

/// Not of our doing: the user has gone elsewhere, and comes back by a click. Menus close.
void Keyboard::lose() {
    for (QWidget* menu = popup(); menu && menu->close();)
        menu = popup();
    m_windows.dropKeyboard();
    deactivate();
}

void Keyboard::activate() {
    QWidget* const window = m_windows.wantingKeyboard();
    if (window && QApplication::activeWindow() != window) QApplication::setActiveWindow(window);
}

void Keyboard::deactivate() {
    m_repeat.stop();
    if (m_windows.has(QApplication::activeWindow())) QApplication::setActiveWindow(nullptr);
}

void Keyboard::key(uint32_t, uint32_t, uint32_t code, uint32_t state) {
    const bool isPressed = state == WL_KEYBOARD_KEY_STATE_PRESSED;
    if (isPressed || code == m_repeated) m_repeat.stop();
    if (isPressed && m_keymap.repeats(code) && m_repeatPause.count() > 0) {
        m_repeated = code;
        m_repeat.start(m_repeatDelay);
    }
    send(isPressed ? QEvent::KeyPress : QEvent::KeyRelease, code, false);
}

void Keyboard::send(QEvent::Type type, uint32_t code, bool isRepeated) {
    QWidget* to = popup();
    if (!to) to = QApplication::activeWindow();
    if (!m_windows.has(to) || !to->windowHandle()) return;
    QKeyEvent event(type, m_keymap.keyOf(code), m_keymap.modifiers(), m_keymap.textOf(code),
                    isRepeated);
    QCoreApplication::sendEvent(to->windowHandle(), &event);
}

} // namespace WindowServer::Wayland
