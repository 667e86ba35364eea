#include "WindowServer/Wayland/Blur/Screencopy.h"

#include <QTransform>

#include <map>
#include <utility>

namespace WindowServer::Wayland {

namespace {

QImage::Format formatFrom(uint32_t format) {
    static const std::map<uint32_t, QImage::Format> formats = {
        {WL_SHM_FORMAT_ARGB8888, QImage::Format_RGB32},
        {WL_SHM_FORMAT_XRGB8888, QImage::Format_RGB32},
        {WL_SHM_FORMAT_ABGR8888, QImage::Format_RGBX8888},
        {WL_SHM_FORMAT_XBGR8888, QImage::Format_RGBX8888},
        {WL_SHM_FORMAT_XRGB2101010, QImage::Format_RGB30},
        {WL_SHM_FORMAT_XBGR2101010, QImage::Format_BGR30}};
    const auto found = formats.find(format);
    return found == formats.end() ? QImage::Format_Invalid : found->second;
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
        .buffer = Tell<&Screencopy::prepare>(),
        .flags = Tell<&Screencopy::m_flags>(),
        .ready = Tell<&Screencopy::finish>(),
        .failed = Tell<&Screencopy::fail>(),
        .damage = Ignored(),
        .linux_dmabuf = Ignored(),
        .buffer_done = Ignored()};
    zwlr_screencopy_frame_v1_add_listener(m_frame.get(), &listener, this);
}

void Screencopy::prepare(uint32_t format, uint32_t width, uint32_t height, uint32_t stride) {
    const QImage::Format known = formatFrom(format);
    if (known != QImage::Format_Invalid)
        m_buffer =
            Buffer::make(m_connection, QSize(static_cast<int>(width), static_cast<int>(height)),
                         static_cast<int>(stride), static_cast<wl_shm_format>(format), known);
    if (m_buffer)
        zwlr_screencopy_frame_v1_copy(m_frame.get(), m_buffer->get());
    else
        fail();
}

void Screencopy::fail() { std::exchange(m_taken, {})({}); }

void Screencopy::finish(uint32_t, uint32_t, uint32_t) {
    const auto taken = std::move(m_taken);
    const auto buffer = std::move(m_buffer);
    const bool isUpsideDown = m_flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT;
    taken(
        upright(buffer->image().convertToFormat(QImage::Format_RGB32).mirrored(false, isUpsideDown),
                m_transform));
    // This may be gone by now. No other image shares the pixels any more, so they are wiped.
    buffer->image().fill(0);
}

} // namespace WindowServer::Wayland
