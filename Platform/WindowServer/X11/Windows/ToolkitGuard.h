#pragma once

#include "WindowServer/Session.h"

#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include <xcb/shape.h>

namespace WindowServer {

class Connection;

/// The places and shapes of the toolkit's windows. What another program makes of one that was set
/// here is undone: the toolkit would take it for its own doing, or be late with it.
class ToolkitGuard {
public:
    /// In the server's pixels, y down. Empty while there is no display.
    using PixelsOf = std::function<PixelRect(const CGRect& frame)>;
    ToolkitGuard(Connection& connection, PixelsOf pixelsOf)
        : m_connection(connection), m_pixelsOf(std::move(pixelsOf)) {}

    /// Borders and shapes are undone from now on.
    void add(ToolkitWindow window);
    void place(ToolkitWindow window, const CGRect& frame);
    /// The same frames may be other pixels now.
    void placeAgain() const;
    void set(ToolkitWindow window, Session::Region region,
             const std::vector<PixelRect>& rectangles);
    void forget(ToolkitWindow window);
    /// Listens to the windows that have come since the last call. To be called at a turn's end:
    /// the toolkit has to make them first, and to show them in its own time.
    void watch();
    void handle(const xcb_generic_event_t& event);

private:
    struct Wish {
        std::optional<CGRect> frame;
        std::map<uint8_t, std::vector<PixelRect>> shapes; ///< By kind, as the extension counts.
        bool watched = false;
    };

    Wish& wishOf(ToolkitWindow window);
    void restorePlace(ToolkitWindow window, const Wish& wish) const;
    void handleConfigure(const xcb_configure_notify_event_t& event) const;
    void handleShape(const xcb_shape_notify_event_t& event) const;
    void restoreShape(ToolkitWindow window, uint8_t kind, const std::vector<PixelRect>& wish) const;
    bool hasShape(ToolkitWindow window, uint8_t kind, const std::vector<PixelRect>& wish) const;

    Connection& m_connection;
    PixelsOf m_pixelsOf;
    std::map<ToolkitWindow, Wish> m_wishes;
    bool m_unwatched = false; ///< Whether a window has come since the last call of `watch`.
};

} // namespace WindowServer
