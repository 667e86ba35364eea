#include "WindowServer/Wayland/Desktop/Outputs.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace WindowServer::Wayland {

Outputs::Outputs(Connection& connection) : m_connection(connection) {
    globalsChanged();
    m_connection.settle(); // What the outputs tell of themselves.
    refresh();
    m_connection.settle(); // What the panels leave of them.
    refresh();
}

void Outputs::globalsChanged() {
    m_isStale = true;
    for (const uint32_t global : m_connection.outputs()) {
        if (std::ranges::any_of(m_outputs,
                                [global](auto& each) { return each->global() == global; }))
            continue;
        m_outputs.push_back(std::make_unique<Output>(m_connection, global));
        m_outputs.back()->onChanged = [this] { m_isStale = true; };
    }
}

void Outputs::refreshIfStale() {
    if (m_isStale) refresh();
}

/// The one at the upper left comes first. Outputs that show but a part of another's have no display
/// of their own.
void Outputs::refresh() {
    m_isStale = false;
    const auto gone = std::stable_partition(m_outputs.begin(), m_outputs.end(), [this](auto& each) {
        return m_connection.outputs().contains(each->global());
    });
    // They go once nothing stands on them any more.
    const std::vector going(std::make_move_iterator(gone),
                            std::make_move_iterator(m_outputs.end()));
    m_outputs.erase(gone, m_outputs.end());
    std::ranges::sort(m_outputs, {}, [](const auto& each) {
        return std::tuple(each->place().y(), each->place().x(), each->name());
    });
    std::vector<Display> displays;
    const auto shown = std::exchange(m_shown, {});
    const auto flip = [&](const QRect& rect) {
        const QRect first = m_shown.front()->place();
        return CGRectMake(rect.x() - first.x(),
                          first.y() + first.height() - rect.y() - rect.height(), rect.width(),
                          rect.height());
    };
    for (const auto& output : m_outputs) {
        const QRect& place = output->place();
        const bool isClone = std::ranges::any_of(m_outputs, [&](const auto& other) {
            return &other != &output && other->isKnown() && other->place().contains(place) &&
                   (&other < &output || other->place() != place);
        });
        if (!output->isKnown() || isClone) continue;
        m_shown.push_back(output.get());
        const QSize pixels = output->pixels();
        displays.push_back({m_numbers.numberOf(output->identity(), output->name()),
                            output->name(),
                            {place.x(), place.y(), pixels.width(), pixels.height()},
                            output->scale(),
                            flip(place),
                            flip(output->freePlace())});
    }
    if (displays == m_displays && shown == m_shown) return;
    const bool isNews = std::exchange(m_displays, displays) != displays;
    if (onRefreshed) onRefreshed();
    if (isNews && onChanged) onChanged();
}

} // namespace WindowServer::Wayland
