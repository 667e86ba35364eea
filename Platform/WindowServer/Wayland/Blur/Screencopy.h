#pragma once

#include "WindowServer/Wayland/Desktop/Output.h"
#include "WindowServer/Wayland/Windows/Buffer.h"

#include <QImage>

#include <functional>

namespace WindowServer::Wayland {

/// One picture of an output, as it stands there at the compositor's next frame. Dropped before it
/// has come, it never comes.
class Screencopy {
public:
    /// Hands over a picture that lasts as long as the call, in the output's pixels as they are
    /// seen; a null one where the compositor refuses.
    using Taken = std::function<void(const QImage& picture)>;

    /// The compositor must offer it.
    Screencopy(const Connection& connection, const Output& output, Taken taken);

private:
    void prepare(uint32_t format, uint32_t width, uint32_t height, uint32_t stride);
    void finish(uint32_t, uint32_t, uint32_t time);
    void fail();

    const Connection& m_connection;
    const wl_output_transform m_transform;
    Taken m_taken;
    Owned<zwlr_screencopy_frame_v1> m_frame;
    std::unique_ptr<Buffer> m_buffer;
    uint32_t m_flags = 0;
};

} // namespace WindowServer::Wayland
