#pragma once

#include "WindowServer/Session.h"

#include <map>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The shapes of the toolkit's windows. What another program makes of one that was set here is
/// undone.
class ToolkitShapes {
public:
    explicit ToolkitShapes(Connection& connection) : m_connection(connection) {}

    void set(ToolkitWindow window, Session::Region region,
             const std::vector<PixelRect>& rectangles);
    void forget(ToolkitWindow window);
    /// Listens to the windows that have come since the last call. To be called at a turn's end:
    /// the toolkit has to make them first, and to show them in its own time.
    void watch();
    void handle(const xcb_generic_event_t& event);

private:
    void restore(ToolkitWindow window, uint8_t kind, const std::vector<PixelRect>& wish) const;
    bool isAsWished(ToolkitWindow window, uint8_t kind, const std::vector<PixelRect>& wish) const;

    Connection& m_connection;
    std::map<ToolkitWindow, std::map<uint8_t, std::vector<PixelRect>>> m_wishes; ///< By kind.
    std::vector<ToolkitWindow> m_unwatched;
};

} // namespace WindowServer
