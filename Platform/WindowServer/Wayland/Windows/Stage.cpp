#include "WindowServer/Wayland/Windows/Stage.h"

#include <cstring>
#include <utility>

namespace WindowServer::Wayland {

namespace {

/// KWin puts the kinds that it knows in places of its own, most of them below windows that fill the
/// screen.
constexpr const char* kind = "cover";

constexpr double scaleUnit = 120; ///< Fractions are told in so many parts.

} // namespace

Stage::Stage(const Connection& connection, const Output& output)
    : m_connection(connection), m_output(output),
      m_layer(connection, output.get(), kind, Zone::IgnoresPanels),
      m_viewport(wp_viewporter_get_viewport(connection.globals().viewporter, surface())),
      m_blur(connection), m_buffers(connection) {
    m_layer.onTold = [this] {
        m_isContentStale = true;
        if (onChanged) onChanged();
    };
    if (auto* const fractions = connection.globals().fractions) {
        m_fraction.reset(wp_fractional_scale_manager_v1_get_fractional_scale(fractions, surface()));
        static const wp_fractional_scale_v1_listener listener = {.preferred_scale =
                                                                     Tell<&Stage::setScale>()};
        wp_fractional_scale_v1_add_listener(m_fraction.get(), &listener, this);
    }
    wl_surface_commit(surface());
}

void Stage::setScale(uint32_t parts) {
    m_toldScale = parts / scaleUnit;
    if (onChanged) onChanged();
}

double Stage::scale() const { return m_toldScale > 0 ? m_toldScale : m_output.scale(); }

void Stage::setContent(const Content& content) {
    if (m_content == content) return;
    m_content = content;
    m_isContentStale = true;
}

void Stage::setInput(const QRegion& region) {
    if (std::exchange(m_input, region) == region) return;
    m_connection.setInput(surface(), region);
    m_isStale = true;
}

void Stage::commit() {
    if (!isUp() || !m_content || isClosed() || !(m_isStale || m_isContentStale)) return;
    if (m_isContentStale && !attachContent()) return;
    wl_surface_commit(surface());
    m_isStale = false;
    m_isContentStale = false;
}

/// Short of memory, it is plain and dark, or waits for the next commit.
bool Stage::attachContent() {
    QImage picture = m_content->picture;
    Buffer* buffer = m_buffers.take(picture.size());
    if (!buffer) {
        picture = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::black);
        buffer = m_buffers.take(picture.size());
    }
    if (!buffer) return false;
    QImage& image = buffer->image();
    for (int y = 0; y < picture.height(); ++y)
        std::memcpy(image.scanLine(y), picture.constScanLine(y),
                    static_cast<size_t>(picture.width()) * 4);
    buffer->attach(surface());
    wp_viewport_set_destination(m_viewport.get(), m_layer.size().width(), m_layer.size().height());
    const bool isOpaque = qAlpha(picture.pixel(0, 0)) == 255;
    wl_surface_set_opaque_region(
        surface(), regionOf(m_connection, isOpaque ? QRect({}, m_layer.size()) : QRect()).get());
    m_blur.set(surface(), m_content->blursBehind ? m_layer.size() : QSize());
    return true;
}

} // namespace WindowServer::Wayland
