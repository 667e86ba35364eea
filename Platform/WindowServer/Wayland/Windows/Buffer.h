#pragma once

#include "WindowServer/Wayland/Connection.h"

#include <QImage>

#include <memory>
#include <vector>

namespace WindowServer::Wayland {

/// Pixels that the compositor reads, or writes, in memory that has no name and no file.
class Buffer {
public:
    /// Null where there is no memory for it.
    static std::unique_ptr<Buffer> make(const Connection& connection, QSize size, int stride,
                                        wl_shm_format format, QImage::Format imageFormat);
    ~Buffer();
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    wl_buffer* get() const { return m_buffer.get(); }
    /// Its pixels: what is drawn there, the compositor sees, and the other way round.
    QImage& image() { return m_image; }
    /// From the time it is attached until the compositor has read it.
    bool isBusy() const { return m_isBusy; }

    /// Shows it as the whole of a surface from the next commit on.
    void attach(wl_surface* surface);

private:
    Buffer() = default;
    void release() { m_isBusy = false; }

    Owned<wl_buffer> m_buffer;
    QImage m_image;
    bool m_isBusy = false;
};

/// Pictures for one surface. While the compositor reads one, the next is drawn.
class Buffers {
public:
    explicit Buffers(const Connection& connection) : m_connection(connection) {}

    /// One that is free to be drawn on. Null where there is no memory for it.
    Buffer* take(QSize size);

private:
    const Connection& m_connection;
    std::vector<std::unique_ptr<Buffer>> m_buffers;
};

} // namespace WindowServer::Wayland
