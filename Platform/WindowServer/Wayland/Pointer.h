#pragma once

#include "WindowServer/Wayland/Cursor.h"

#include <QEvent>
#include <QPointF>
#include <QPointer>
#include <QWidget>

#include <optional>

namespace WindowServer::Wayland {

class Keymap;
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

    /// To a place in the toolkit's coordinates.
    void move(uint32_t time, QPointF place);
    void button(uint32_t time, uint32_t code, bool isPressed);
    void leave();

private:
    // What the compositor tells. Serials come first.
    void entered(uint32_t serial, wl_surface* surface, wl_fixed_t x, wl_fixed_t y);
    void left(uint32_t, wl_surface*) { leave(); }
    void moved(uint32_t time, wl_fixed_t x, wl_fixed_t y);
    void clicked(uint32_t, uint32_t time, uint32_t code, uint32_t state);
    void scrolled(uint32_t time, uint32_t axis, wl_fixed_t distance);
    void stepped(uint32_t, int steps) { m_steps = steps; }

    QWidget* target() const;
    void send(QWidget* to, QEvent::Type type, Qt::MouseButton button, uint32_t time) const;
    void showCursor();

    const Connection& m_connection;
    const Stages& m_stages;
    const StagedWindows& m_windows;
    const Keymap& m_keymap;
    Owned<wl_pointer> m_pointer;
    Cursor m_cursor;
    uint32_t m_serial = 0;
    uint32_t m_time = 0;            ///< Of its last move.
    QPointF m_corner;               ///< Of the stage that it is on.
    std::optional<QPointF> m_place; ///< In the toolkit's coordinates, while it is on a stage.
    QPointer<QWidget> m_under;      ///< Has been told that it is there.
    QPointer<QWidget> m_pressed;    ///< Gets all until the buttons are let go.
    Qt::MouseButtons m_buttons;
    int m_steps = 0; ///< Of a wheel that has them.
    struct Press {
        uint32_t time = 0;
        Qt::MouseButton button = Qt::NoButton;
        QPointF place;
    };
    std::optional<Press> m_last; ///< That another one would make a double click.
    std::optional<Qt::CursorShape> m_shape;
};

} // namespace WindowServer::Wayland
