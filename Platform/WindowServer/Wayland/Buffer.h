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
                                        wl_shm_format format);
    ~Buffer();
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    wl_buffer* get() const { return m_buffer.get(); }
    uchar* bytes() const { return m_bytes; }
    QSize size() const { return m_size; }
    /// From the time it is attached until the compositor has read it.
    bool isBusy() const { return m_isBusy; }

    /// Shows it as the whole of a surface from the next commit on.
    void attach(wl_surface* surface);

private:
    Buffer() = default;
    void release() { m_isBusy = false; }

    Owned<wl_buffer> m_buffer;
    uchar* m_bytes = nullptr;
    size_t m_length = 0;
    QSize m_size;
    bool m_isBusy = false;
};

/// Pictures for one surface. While the compositor reads one, the next is drawn.
class Buffers {
public:
    explicit Buffers(const Connection& connection) : m_connection(connection) {}

    /// One that is free to be drawn on, as `imageOf` shows it. Null where there is no memory.
    Buffer* take(QSize size);
    static QImage imageOf(const Buffer& buffer);

private:
    const Connection& m_connection;
    std::vector<std::unique_ptr<Buffer>> m_buffers;
};

} // namespace WindowServer::Wayland
