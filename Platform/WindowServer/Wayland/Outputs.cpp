#include "WindowServer/Wayland/Outputs.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace WindowServer::Wayland {

namespace {

/// What panels leave of a place. It is told how much and not where, so as much is left free at the
/// opposite side.
QRect freeOf(const QRect& place, const QSize& room) {
    if (room.isEmpty()) return place;
    const int aside = std::max(place.width() - room.width(), 0);
    const int above = std::max(place.height() - room.height(), 0);
    return place.adjusted(aside, above, -aside, -above);
}

} // namespace

Outputs::Outputs(Connection& connection) : m_connection(connection) {
    globalsChanged();
    m_connection.settle(); // What the outputs tell of themselves.
    refresh();
    m_connection.settle(); // What the panels leave of them.
    refresh();
}

void Outputs::globalsChanged() {
    const auto& present = m_connection.outputs();
    m_isStale = true;
    for (const auto& [name, version] : present) {
        const auto known = [name = name](const Entry& e) { return e.output->global() == name; };
        if (std::ranges::any_of(m_entries, known)) continue;
        auto output = std::make_unique<Output>(m_connection, name);
        output->onChanged = [this] { m_isStale = true; };
        m_entries.push_back({std::move(output), nullptr});
    }
}

Display Outputs::displayOf(const Entry& entry) {
    const Output& output = *entry.output;
    const QRect place = output.place();
    const QSize pixels = output.pixels();
    return {m_numbers.numberOf(output.identity(), output.name()),
            output.name(),
            {place.x(), place.y(), pixels.width(), pixels.height()},
            output.scale(),
            {},
            {}};
}

void Outputs::refreshIfStale() {
    if (m_isStale) refresh();
}

/// The one at the upper left comes first. Outputs that show but a part of another's have no display
/// of their own.
void Outputs::refresh() {
    m_isStale = false;
    const auto gone =
        std::stable_partition(m_entries.begin(), m_entries.end(), [this](const Entry& entry) {
            return m_connection.outputs().contains(entry.output->global());
        });
    // They go once nothing stands on them any more.
    const std::vector<Entry> going(std::make_move_iterator(gone),
                                   std::make_move_iterator(m_entries.end()));
    m_entries.erase(gone, m_entries.end());
    for (Entry& entry : m_entries) {
        if (entry.probe || !entry.output->isKnown()) continue;
        entry.probe =
            std::make_unique<LayerSurface>(m_connection, *entry.output, "probe", Zone::KeepsClear);
        entry.probe->onTold = [this] { m_isStale = true; };
        wl_surface_commit(entry.probe->get());
    }
    std::ranges::sort(m_entries, {}, [](const Entry& entry) {
        const QPoint corner = entry.output->place().topLeft();
        return std::tuple(corner.y(), corner.x(), entry.output->name());
    });
    std::vector<Display> displays;
    const auto shown = std::exchange(m_shown, {});
    const auto flip = [&](const QRect& rect) {
        const QRect first = m_shown.front()->place();
        return CGRectMake(rect.x() - first.x(),
                          first.y() + first.height() - rect.y() - rect.height(), rect.width(),
                          rect.height());
    };
    for (const Entry& entry : m_entries) {
        const QRect place = entry.output->place();
        const bool isClone = std::ranges::any_of(m_entries, [&](const Entry& other) {
            const QRect theirs = other.output->place();
            return &other != &entry && other.output->isKnown() && theirs.contains(place) &&
                   (&other < &entry || theirs != place);
        });
        if (!entry.output->isKnown() || isClone) continue;
        m_shown.push_back(entry.output.get());
        displays.push_back(displayOf(entry));
        displays.back().frame = flip(place);
        displays.back().visibleFrame = flip(freeOf(place, entry.probe->size()));
    }
    if (displays == m_displays && shown == m_shown) return;
    const bool isNews = std::exchange(m_displays, displays) != displays;
    if (onRefreshed) onRefreshed();
    if (isNews && onChanged) onChanged();
}

} // namespace WindowServer::Wayland
