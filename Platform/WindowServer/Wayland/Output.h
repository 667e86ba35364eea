#pragma once

#include "WindowServer/Wayland/Connection.h"

#include <QRect>

#include <functional>
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
    bool isKnown() const { return m_isTold && !m_mode.isEmpty(); }
    const std::string& name() const { return m_name.empty() ? m_oldName : m_name; }
    /// What tells its monitor apart from others; the name where the monitor has nothing to tell.
    std::string identity() const;
    QRect place() const; ///< In points, as the compositor lays the outputs out.
    QSize pixels() const;
    double scale() const; ///< Device pixels in a point.
    wl_output_transform transform() const { return m_transform; }

    /// Called when some of it has changed, all of it told.
    std::function<void()> onChanged;

private:
    void listen();
    void listenToLayout(zxdg_output_manager_v1* manager);
    void setGeometry(int x, int y, int wide, int high, int subpixel, const char* make,
                     const char* model, int transform);
    void setMode(uint32_t flags, int width, int height, int refresh);
    void finish();
    void moveTo(int x, int y) { m_place.moveTo(x, y); }
    void resizeTo(int width, int height) { m_place.setSize({width, height}); }
    void finishLayout();

    uint32_t m_global;
    Owned<wl_output> m_output;
    Owned<zxdg_output_v1> m_layout;
    bool m_isTold = false;
    std::string m_name;
    std::string m_oldName; ///< As older versions tell it.
    QPoint m_corner;
    QSize m_mode;
    int m_wholeScale = 1;
    wl_output_transform m_transform = WL_OUTPUT_TRANSFORM_NORMAL;
    QRect m_place; ///< Empty where nobody tells it.
};

} // namespace WindowServer::Wayland
