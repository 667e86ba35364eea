#include "WindowServer/X11/Blur/Redirection.h"

#include "WindowServer/X11/Connection.h"

#include <xcb/composite.h>

namespace WindowServer {

// Automatic leaves the drawing to the server, so it lives beside a compositor's manual redirection
// and outlives it.
Redirection::Redirection(Connection& connection) : m_connection(connection) {
    xcb_composite_redirect_subwindows(connection.xcb(), connection.root(),
                                      XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

Redirection::~Redirection() {
    xcb_composite_unredirect_subwindows(m_connection.xcb(), m_connection.root(),
                                        XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

void Redirection::exempt(xcb_window_t window) {
    xcb_composite_unredirect_window(m_connection.xcb(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

} // namespace WindowServer
