#pragma once

#include "WindowServer/X11/Blur/Drawable.h"

namespace WindowServer {

class Connection;

/// The screen as it is seen now, with everything that stands on it.
class ScreenPicture : public Drawable {
public:
    explicit ScreenPicture(Connection& connection);
    ~ScreenPicture() override;
    ScreenPicture(const ScreenPicture&) = delete;
    ScreenPicture& operator=(const ScreenPicture&) = delete;

    void drawHalf(xcb_render_picture_t target, const PixelRect& area, int originX,
                  int originY) override;

private:
    Connection& m_connection;
    xcb_render_picture_t m_picture;
};

} // namespace WindowServer
