#pragma once

#include "WindowServer/Wayland/Blur/BackgroundBlur.h"
#include "WindowServer/Wayland/Desktop/Output.h"
#include "WindowServer/Wayland/Windows/Buffer.h"

#include <functional>
#include <optional>

namespace WindowServer::Wayland {

/// What stands above all windows of other programs on one output. The cover is its content; the
/// program's own windows are parts of it, in front of that. It takes no keys, and no clicks but
/// those that fall on what it is told.
class Stage {
public:
    Stage(const Connection& connection, const Output& output);

    const Output& output() const { return m_output; }
    wl_surface* surface() const { return m_layer.get(); }
    QRect place() const { return {m_output.place().topLeft(), m_layer.size()}; }
    double scale() const;
    /// Whether it has a place, so that windows can be parts of it.
    bool isUp() const { return !m_layer.size().isEmpty(); }
    bool isClosed() const { return m_layer.isClosed(); }

    struct Content {
        QImage picture; ///< Stretched over the output.
        bool blursBehind = false;
        bool operator==(const Content&) const = default;
    };
    /// It comes on the screen with the first.
    void setContent(const Content& content);
    void setInput(const QRegion& region);
    /// Its parts have other places or another order.
    void partsChanged() { m_isStale = true; }
    /// Puts all that was changed on the screen at once.
    void commit();

    /// Called when size or scale have come to differ, or the compositor has closed it.
    std::function<void()> onChanged;

private:
    void setScale(uint32_t parts);
    bool attachContent();

    const Connection& m_connection;
    const Output& m_output;
    LayerSurface m_layer;
    Owned<wp_viewport> m_viewport;
    Owned<wp_fractional_scale_v1> m_fraction;
    BackgroundBlur m_blur;
    Buffers m_buffers;
    double m_toldScale = 0; ///< 0 where it is not told.
    std::optional<Content> m_content;
    QRegion m_input;
    bool m_isContentStale = false;
    bool m_isStale = false;
};

} // namespace WindowServer::Wayland
