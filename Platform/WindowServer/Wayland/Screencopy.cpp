#include "WindowServer/Wayland/Screencopy.h"

#include <QTransform>

#include <cstring>
#include <utility>

namespace WindowServer::Wayland {

namespace {

QImage::Format formatFrom(uint32_t format) {
    switch (format) {
    case WL_SHM_FORMAT_ARGB8888:
    case WL_SHM_FORMAT_XRGB8888:
        return QImage::Format_RGB32;
    case WL_SHM_FORMAT_ABGR8888:
    case WL_SHM_FORMAT_XBGR8888:
        return QImage::Format_RGBX8888;
    case WL_SHM_FORMAT_XRGB2101010:
        return QImage::Format_RGB30;
    case WL_SHM_FORMAT_XBGR2101010:
        return QImage::Format_BGR30;
    default:
        return QImage::Format_Invalid;
    }
}

/// As it is seen, from what the output is sent.
QImage upright(const QImage& image, wl_output_transform transform) {
    const bool isMirrored = transform & WL_OUTPUT_TRANSFORM_FLIPPED;
    const int quarters = transform & WL_OUTPUT_TRANSFORM_270;
    const QImage turned =
        quarters ? image.transformed(QTransform().rotate(90.0 * quarters)) : image;
    return isMirrored ? turned.mirrored(true, false) : turned;
}

} // namespace

Screencopy::Screencopy(const Connection& connection, const Output& output, Taken taken)
    : m_connection(connection), m_transform(output.transform()), m_taken(std::move(taken)) {
    constexpr int withoutPointer = 0;
    m_frame.reset(zwlr_screencopy_manager_v1_capture_output(connection.globals().screencopy,
                                                            withoutPointer, output.get()));
    static const zwlr_screencopy_frame_v1_listener listener = {
        .buffer =
            [](void* self, zwlr_screencopy_frame_v1*, uint32_t format, uint32_t width,
               uint32_t height, uint32_t stride) {
                static_cast<Screencopy*>(self)->prepare(
                    format, QSize(static_cast<int>(width), static_cast<int>(height)),
                    static_cast<int>(stride));
            },
        .flags =
            [](void* self, zwlr_screencopy_frame_v1*, uint32_t flags) {
                static_cast<Screencopy*>(self)->m_isUpsideDown =
                    flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT;
            },
        .ready = [](void* self, zwlr_screencopy_frame_v1*, uint32_t, uint32_t,
                    uint32_t) { static_cast<Screencopy*>(self)->finish(true); },
        .failed = [](void* self,
                     zwlr_screencopy_frame_v1*) { static_cast<Screencopy*>(self)->finish(false); },
        .damage = [](void*, zwlr_screencopy_frame_v1*, uint32_t, uint32_t, uint32_t, uint32_t) {},
        .linux_dmabuf = [](void*, zwlr_screencopy_frame_v1*, uint32_t, uint32_t, uint32_t) {},
        .buffer_done = [](void*, zwlr_screencopy_frame_v1*) {}};
    zwlr_screencopy_frame_v1_add_listener(m_frame.get(), &listener, this);
}

void Screencopy::prepare(uint32_t format, QSize size, int stride) {
    m_format = formatFrom(format);
    m_stride = stride;
    if (m_format != QImage::Format_Invalid)
        m_buffer = Buffer::make(m_connection, size, stride, static_cast<wl_shm_format>(format));
    if (m_buffer)
        zwlr_screencopy_frame_v1_copy(m_frame.get(), m_buffer->get());
    else
        finish(false);
}

void Screencopy::finish(bool isGood) {
    const auto taken = std::move(m_taken);
    const auto buffer = std::move(m_buffer);
    if (!isGood || !buffer) return taken({});
    const QImage raw(buffer->bytes(), buffer->size().width(), buffer->size().height(), m_stride,
                     m_format);
    const QImage plain = raw.convertToFormat(QImage::Format_RGB32);
    taken(upright(m_isUpsideDown ? plain.mirrored() : plain, m_transform));
    // This may be gone by now.
    std::memset(buffer->bytes(), 0, static_cast<size_t>(raw.sizeInBytes()));
}

} // namespace WindowServer::Wayland
