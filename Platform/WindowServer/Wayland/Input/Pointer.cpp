#include "WindowServer/Wayland/Input/Pointer.h"

#include "WindowServer/Wayland/Input/Keymap.h"
#include "WindowServer/Wayland/Windows/StagedWindows.h"
#include "WindowServer/Wayland/Windows/Stages.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWindow>

#include <cmath>
#include <utility>

#include <linux/input-event-codes.h>

namespace WindowServer::Wayland {

namespace {

// Of the toolkit's, for one step of a wheel, and for each point of a smooth one.
constexpr int anglePerStep = 120;
constexpr double anglePerPoint = 8;

/// So far a press that is broken off goes beside its window.
constexpr QPointF aside(100, 100);

} // namespace

Pointer::Pointer(const Connection& connection, const Stages& stages, const StagedWindows& windows,
                 const Keymap& keymap)
    : m_connection(connection), m_stages(stages), m_windows(windows), m_keymap(keymap),
      m_cursor(connection) {}

void Pointer::connectTo(wl_seat* seat) {
    m_pointer.reset(wl_seat_get_pointer(seat));
    static const wl_pointer_listener listener = {.enter = Tell<&Pointer::entered>(),
                                                 .leave = Tell<&Pointer::left>(),
                                                 .motion = Tell<&Pointer::moved>(),
                                                 .button = Tell<&Pointer::clicked>(),
                                                 .axis = Tell<&Pointer::scrolled>(),
                                                 .frame = Ignored(),
                                                 .axis_source = Ignored(),
                                                 .axis_stop = Ignored(),
                                                 .axis_discrete = Tell<&Pointer::stepped>(),
                                                 .axis_value120 = Ignored()};
    wl_pointer_add_listener(m_pointer.get(), &listener, this);
}

bool Pointer::enter(const wl_surface* surface) {
    const Stage* const stage = m_stages.of(surface);
    if (stage) m_stage = stage;
    return stage;
}

void Pointer::entered(uint32_t serial, wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
    if (!enter(surface)) return;
    m_cursor.show(m_pointer.get(), serial, static_cast<int>(std::ceil(m_stage->scale())));
    move(pointFrom(x, y));
}

/// The toolkit numbers them in the order in which the kernel does.
void Pointer::clicked(uint32_t, uint32_t, uint32_t code, uint32_t state) {
    if (code >= BTN_LEFT && code <= BTN_TASK)
        button(static_cast<Qt::MouseButton>(1U << (code - BTN_LEFT)),
               state == WL_POINTER_BUTTON_STATE_PRESSED);
}

void Pointer::leave() {
    if (m_pressed && m_place) breakOff();
    m_place.reset();
    m_pressed.clear();
    m_buttons = {};
    look();
}

void Pointer::leave(const Stage& stage) {
    if (m_stage != &stage) return;
    leave();
    m_stage = nullptr;
}

/// A lock screen, a gesture or a device that goes may take the mouse in the middle of a press. What
/// was dragged is let go there; what was not becomes a drag to nowhere, so that nothing is clicked.
void Pointer::breakOff() {
    const QPointF here = *m_place, beside = m_pressed->pos() - aside;
    for (const QPointF& place : {beside, here}) {
        m_place = place;
        send(m_pressed, QEvent::MouseMove);
    }
    m_place = beside;
    m_buttons = {};
    send(m_pressed, QEvent::MouseButtonRelease, Qt::LeftButton);
}

void Pointer::move(QPointF place) {
    if (!m_stage) return;
    m_place = m_stage->place().topLeft() + place;
    look();
    send(target(), QEvent::MouseMove);
}

void Pointer::look() {
    if (m_pressed) return;
    QWidget* const now = m_place ? m_windows.at(*m_place) : nullptr;
    if (now == m_under) return;
    const QPointer<QWidget> before = std::exchange(m_under, now);
    if (before && before->windowHandle()) {
        QEvent left(QEvent::Leave);
        QCoreApplication::sendEvent(before->windowHandle(), &left);
    }
    if (m_under && m_under->windowHandle() && m_place) {
        const QPointF inWindow = *m_place - m_under->pos();
        QEnterEvent entered(inWindow, inWindow, *m_place);
        QCoreApplication::sendEvent(m_under->windowHandle(), &entered);
    }
}

/// An open menu gets all that is not another menu's.
QWidget* Pointer::target() const {
    if (m_pressed) return m_pressed;
    QWidget* const here = m_place ? m_windows.at(*m_place) : nullptr;
    QWidget* const menu = QApplication::activePopupWidget();
    if (!m_windows.has(menu)) return here;
    return here && here->windowType() == Qt::Popup ? here : menu;
}

void Pointer::send(QWidget* to, QEvent::Type type, Qt::MouseButton button) const {
    if (!to || !to->windowHandle() || !m_place) return;
    const QPointF inWindow = *m_place - to->pos();
    QMouseEvent event(type, inWindow, inWindow, *m_place, button, m_buttons, m_keymap.modifiers());
    QCoreApplication::sendEvent(to->windowHandle(), &event);
}

void Pointer::button(Qt::MouseButton button, bool isPressed) {
    if (!m_place) return;
    const QPointer<QWidget> to = target();
    m_buttons.setFlag(button, isPressed);
    if (isPressed) {
        if (!m_pressed) m_pressed = to;
        return send(to, QEvent::MouseButtonPress, button);
    }
    if (!m_buttons) m_pressed.clear();
    send(to, QEvent::MouseButtonRelease, button);
    look();
}

void Pointer::scrolled(uint32_t, uint32_t axis, wl_fixed_t distance) {
    const double points = wl_fixed_to_double(distance);
    const int steps = std::exchange(m_steps, 0);
    QWidget* const to = target();
    if (!m_place || !to || !to->windowHandle()) return;
    const int angle =
        steps != 0 ? -steps * anglePerStep : static_cast<int>(std::lround(-points * anglePerPoint));
    const bool isVertical = axis == WL_POINTER_AXIS_VERTICAL_SCROLL;
    const QPointF inWindow = *m_place - to->pos();
    QWheelEvent event(inWindow, *m_place, {}, isVertical ? QPoint(0, angle) : QPoint(angle, 0),
                      m_buttons, m_keymap.modifiers(), Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(to->windowHandle(), &event);
}

} // namespace WindowServer::Wayland
