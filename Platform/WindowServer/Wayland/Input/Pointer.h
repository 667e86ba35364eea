#pragma once

#include "WindowServer/Wayland/Input/Cursor.h"

#include <QEvent>
#include <QPointF>
#include <QPointer>
#include <QWidget>

#include <optional>

namespace WindowServer::Wayland {

class Keymap;
class Stage;
class StagedWindows;
class Stages;

/// Hands the staged windows what the pointer does on the stages, as events of the toolkit's own
/// kind. From there on it knows of menus, of presses and of what in a window is meant.
class Pointer {
public:
    Pointer(const Connection& connection, const Stages& stages, const StagedWindows& windows,
            const Keymap& keymap);

    void connectTo(wl_seat* seat);

    /// What is beneath it may be another window now.
    void look();

    /// False where the surface is no stage's.
    bool enter(const wl_surface* surface);
    /// On the stage that it has entered.
    void move(QPointF place);
    void button(Qt::MouseButton button, bool isPressed);
    void leave();
    /// The stage goes.
    void leave(const Stage& stage);

private:
    // What the compositor tells. Serials and times come first.
    void entered(uint32_t serial, wl_surface* surface, wl_fixed_t x, wl_fixed_t y);
    void left(uint32_t, wl_surface*) { leave(); }
    void moved(uint32_t, wl_fixed_t x, wl_fixed_t y) { move(pointFrom(x, y)); }
    void clicked(uint32_t, uint32_t, uint32_t code, uint32_t state);
    void scrolled(uint32_t, uint32_t axis, wl_fixed_t distance);
    void stepped(uint32_t, int steps) { m_steps = steps; }

    QWidget* target() const;
    void send(QWidget* to, QEvent::Type type, Qt::MouseButton button = Qt::NoButton) const;
    void breakOff();

    const Connection& m_connection;
    const Stages& m_stages;
    const StagedWindows& m_windows;
    const Keymap& m_keymap;
    Owned<wl_pointer> m_pointer;
    Cursor m_cursor;
    const Stage* m_stage = nullptr; ///< That it has entered last.
    std::optional<QPointF> m_place; ///< In the toolkit's coordinates, while it is on a stage.
    QPointer<QWidget> m_under;      ///< Has been told that it is there.
    QPointer<QWidget> m_pressed;    ///< Gets all until the buttons are let go.
    Qt::MouseButtons m_buttons;
    int m_steps = 0; ///< Of a wheel that has them.
};

} // namespace WindowServer::Wayland
