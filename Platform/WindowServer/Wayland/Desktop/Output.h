#pragma once

#include "WindowServer/Wayland/Windows/LayerSurface.h"

#include <QRect>

#include <functional>
#include <optional>
#include <string>

namespace WindowServer::Wayland {

/// An output, as the compositor tells of it.
class Output {
public:
    Output(const Connection& connection, uint32_t global);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    wl_output* get() const { return m_output.get(); }
    uint32_t global() const { return m_global; }

    /// Whether all of it has been told, and it shows anything.
    bool isKnown() const { return !m_mode.isEmpty() && !m_place.isEmpty(); }
    const std::string& name() const { return m_name; }
    /// What tells its monitor apart from others; the name where the monitor has nothing to tell.
    std::string identity() const;
    /// In points, as the compositor lays the outputs out.
    const QRect& place() const { return m_place; }
    /// What panels leave of that.
    QRect freePlace() const;
    QSize pixels() const;
    double scale() const; ///< Device pixels in a point.
    wl_output_transform transform() const { return m_transform; }

    /// Called when some of it has changed, all of it told.
    std::function<void()> onChanged;

private:
    void setGeometry(int x, int y, int wide, int high, int subpixel, const char* make,
                     const char* model, int transform);
    void setMode(uint32_t flags, int width, int height, int refresh);
    void moveTo(int x, int y) { m_place.moveTo(x, y); }
    void resizeTo(int width, int height) { m_place.setSize({width, height}); }
    void finish();

    const Connection& m_connection;
    const uint32_t m_global;
    const Owned<wl_output> m_output;
    const Owned<zxdg_output_v1> m_layout;
    std::string m_name;
    QSize m_mode;
    wl_output_transform m_transform = WL_OUTPUT_TRANSFORM_NORMAL;
    QRect m_place;
    /// Shows nothing, and is kept clear of the panels: so it is told what they leave.
    std::optional<LayerSurface> m_probe;
};

} // namespace WindowServer::Wayland
