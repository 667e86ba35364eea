#pragma once

#include "WindowServer/Wayland/Windows/Stage.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

namespace WindowServer::Wayland {

class Stages;

/// A window of the program's own that stands on stages. The toolkit believes it shown, and never
/// shows it: it is painted here, into a part of each stage that it is on.
class StagedWindow {
public:
    StagedWindow(const Connection& connection, QWidget& widget);

    /// Null once the toolkit has dropped it.
    QWidget* widget() const { return m_widget; }
    bool isToolTip() const { return m_widget && m_widget->windowType() == Qt::ToolTip; }
    bool isPopup() const { return m_widget && m_widget->windowType() == Qt::Popup; }

    /// It looks different.
    void repaint();
    /// Puts it onto the stages, in its place and size.
    void stand(const Stages& stages);
    void leave(const Stage& stage);
    /// Orders its parts above those that were put there before.
    void raise(const Stage& stage, wl_surface*& top);
    void paint();

private:
    struct Part {
        Part(const Connection& connection, Stage& on);
        void drawn(uint32_t) { frame.reset(); }

        Stage& stage;
        Owned<wl_surface> surface;
        Owned<wl_subsurface> place;
        Owned<wp_viewport> viewport;
        Buffers buffers;
        QRect area;    ///< In the toolkit's coordinates: as much of the window as is on the stage.
        QPoint offset; ///< In the window.
        double scale = 0;
        bool isStale = true;
        Owned<wl_callback> frame; ///< While the compositor has not drawn what was painted last.
    };

    void paint(Part& part);

    const Connection& m_connection;
    QPointer<QWidget> m_widget;
    std::vector<std::unique_ptr<Part>> m_parts;
};

} // namespace WindowServer::Wayland
