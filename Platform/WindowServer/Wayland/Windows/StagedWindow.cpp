#include "WindowServer/Wayland/Windows/StagedWindow.h"

#include "WindowServer/Wayland/Windows/Stages.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace WindowServer::Wayland {

StagedWindow::Part::Part(const Connection& connection, Stage& on)
    : stage(on), surface(connection.makeSurface()),
      place(wl_subcompositor_get_subsurface(connection.globals().subcompositor, surface.get(),
                                            on.surface())),
      viewport(wp_viewporter_get_viewport(connection.globals().viewporter, surface.get())),
      buffers(connection) {
    wl_subsurface_set_desync(place.get());
    connection.setInput(surface.get(), {}); // Input is the stage's.
}

StagedWindow::StagedWindow(const Connection& connection, QWidget& widget)
    : m_connection(connection), m_widget(&widget) {}

void StagedWindow::repaint() {
    for (const auto& part : m_parts)
        part->isStale = true;
}

void StagedWindow::leave(const Stage& stage) {
    std::erase_if(m_parts, [&stage](const auto& part) { return &part->stage == &stage; });
}

void StagedWindow::stand(const Stages& stages) {
    if (!m_widget) return;
    const QRect whole = m_widget->geometry();
    for (const auto& stage : stages.all()) {
        const QRect area = stage->place() & whole;
        if (area.isEmpty() || !stage->isUp()) {
            leave(*stage);
            continue;
        }
        auto part = std::ranges::find_if(
            m_parts, [&stage](const auto& each) { return &each->stage == stage.get(); });
        if (part == m_parts.end()) {
            m_parts.push_back(std::make_unique<Part>(m_connection, *stage));
            part = std::prev(m_parts.end());
        }
        Part& on = **part;
        const QPoint offset = area.topLeft() - whole.topLeft();
        if (area.size() != on.area.size() || offset != on.offset || stage->scale() != on.scale)
            on.isStale = true;
        const QPoint corner = area.topLeft() - stage->place().topLeft();
        if (on.area != area) wl_subsurface_set_position(on.place.get(), corner.x(), corner.y());
        on.area = area;
        on.offset = offset;
        on.scale = stage->scale();
        stage->partsChanged();
    }
}

void StagedWindow::raise(const Stage& stage, wl_surface*& top) {
    for (const auto& part : m_parts) {
        if (&part->stage != &stage) continue;
        wl_subsurface_place_above(part->place.get(), top);
        top = part->surface.get();
    }
}

void StagedWindow::paint() {
    for (const auto& part : m_parts)
        if (m_widget && part->isStale && !part->frame) paint(*part);
}

void StagedWindow::paint(Part& part) {
    part.isStale = false;
    const QSize pixels = (QSizeF(part.area.size()) * part.scale).toSize();
    Buffer* const buffer = part.buffers.take(pixels);
    if (!buffer) return;
    QImage& image = buffer->image();
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(part.scale);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform); // Else fractions would break up icons.
    m_widget->render(&painter, -part.offset, {},
                     QWidget::DrawWindowBackground | QWidget::DrawChildren);
    wl_surface* const surface = part.surface.get();
    wp_viewport_set_destination(part.viewport.get(), part.area.width(), part.area.height());
    buffer->attach(surface);
    part.frame.reset(wl_surface_frame(surface));
    static const wl_callback_listener listener = {.done = Tell<&Part::drawn>()};
    wl_callback_add_listener(part.frame.get(), &listener, &part);
    wl_surface_commit(surface);
}

} // namespace WindowServer::Wayland
