#pragma once

#include "WindowServer/ToolkitWindows.h"
#include "WindowServer/Wayland/Windows/HeldWindow.h"
#include "WindowServer/Wayland/Windows/StagedWindow.h"

#include <QObject>

#include <map>
#include <memory>
#include <vector>

namespace WindowServer::Wayland {

class Stages;

/// Puts those of the toolkit's windows on the stages that no window manager is to place: buttons,
/// alerts, menus, tool tips. All others are ordinary windows of the compositor's.
class StagedWindows : public QObject, public ToolkitWindows {
public:
    StagedWindows(const Connection& connection, Stages& stages);

    void attach();

    std::shared_ptr<ToolkitWindow> hold(WindowId window) override;
    bool hasManager() const override { return true; }
    bool areComposited() const override { return true; }

    /// Called as one has left the screen, or moved beneath the pointer.
    std::function<void()> onMoved;

    /// The one that takes input there, in the toolkit's coordinates. Null where none does.
    QWidget* at(QPointF point) const;
    /// Whether the widget is a window that stands on a stage.
    bool has(const QWidget* widget) const;
    /// The one that asked for the keyboard last. Null where none wants it.
    QWidget* wantingKeyboard() const;
    /// The keyboard went elsewhere: nobody wants it until a window asks for it anew.
    void dropKeyboard();
    /// What they cover of a place, in the toolkit's coordinates.
    QRegion areasIn(const QRect& place) const;

    void stagesChanged();
    void leave(const Stage& stage);
    /// Paints, places and orders what has changed. To be called at a turn's end.
    void commit();

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    StagedWindow* find(const QWidget* widget) const;
    HeldWindow* heldOf(const QWidget& widget) const;
    int levelOf(const StagedWindow& window) const;
    QRegion inputOf(const StagedWindow& window) const;
    void add(QWidget& widget);
    void remove(const QWidget* widget);
    void order();
    void limitInput();

    const Connection& m_connection;
    Stages& m_stages;
    std::map<WindowId, std::weak_ptr<HeldWindow>> m_held;
    std::vector<std::unique_ptr<StagedWindow>> m_windows; ///< Backmost first.
    bool m_isStale = false;                               ///< Places, levels or shapes.
};

} // namespace WindowServer::Wayland
