#pragma once

#include "WindowServer/Wayland/Desktop/Outputs.h"
#include "WindowServer/Wayland/Windows/Stage.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace WindowServer::Wayland {

/// One stage for each display.
class Stages {
public:
    Stages(const Connection& connection, const Outputs& outputs);

    const std::vector<std::unique_ptr<Stage>>& all() const { return m_stages; }
    /// The stage of the display with that frame, else of the one that holds its middle. Null where
    /// there is none.
    Stage* at(const CGRect& frame) const;
    /// Null where the surface is no stage's.
    Stage* of(const wl_surface* surface) const;
    /// Null where the point, in the toolkit's coordinates, is on none.
    Stage* at(QPointF point) const;

    /// Called before a stage goes.
    std::function<void(const Stage&)> onGoing;
    /// Called after stages have come or gone, or have another size or scale.
    std::function<void()> onChanged;

    void outputsChanged() { m_isStale = true; }
    /// To be called at a turn's end.
    void refreshIfStale();
    void commit();

private:
    const Connection& m_connection;
    const Outputs& m_outputs;
    std::vector<std::unique_ptr<Stage>> m_stages;
    bool m_isStale = true;
    QTimer m_retry; ///< For those that the compositor has closed.
};

} // namespace WindowServer::Wayland
