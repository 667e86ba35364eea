#include "WindowServer/Wayland/Desktop/Output.h"

#include "WindowServer/DisplayNumbers.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace WindowServer::Wayland {

namespace {

/// The description that the kernel has of the monitor at that connector. Empty where it has none.
std::string edidAt(const std::string& connector) {
    std::error_code none;
    for (const auto& each : std::filesystem::directory_iterator("/sys/class/drm", none)) {
        // "card0-DP-1"
        const std::string name = each.path().filename();
        const size_t dash = name.find('-');
        if (dash == std::string::npos || name.substr(dash + 1) != connector) continue;
        std::ifstream file(each.path() / "edid", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    return {};
}

} // namespace

/// The second tells the size in points, where those are no whole number of pixels too.
Output::Output(const Connection& connection, uint32_t global)
    : m_connection(connection), m_global(global), m_output(connection.bindOutput(global)),
      m_layout(zxdg_output_manager_v1_get_xdg_output(connection.globals().outputs, get())) {
    static const wl_output_listener listener = {.geometry = Tell<&Output::setGeometry>(),
                                                .mode = Tell<&Output::setMode>(),
                                                .done = Tell<&Output::finish>(),
                                                .scale = Ignored(),
                                                .name = Ignored(),
                                                .description = Ignored()};
    wl_output_add_listener(get(), &listener, this);
    static const zxdg_output_v1_listener layoutListener = {
        .logical_position = Tell<&Output::moveTo>(),
        .logical_size = Tell<&Output::resizeTo>(),
        .done = Tell<&Output::finish>(),
        .name = Tell<&Output::m_name>(),
        .description = Ignored()};
    zxdg_output_v1_add_listener(m_layout.get(), &layoutListener, this);
}

void Output::setGeometry(int, int, int, int, int, const char*, const char*, int transform) {
    m_transform = static_cast<wl_output_transform>(transform);
}

void Output::setMode(uint32_t flags, int width, int height, int) {
    if (flags & WL_OUTPUT_MODE_CURRENT) m_mode = {width, height};
}

void Output::finish() {
    if (!isKnown()) return;
    if (!m_probe) {
        m_probe.emplace(m_connection, get(), "probe", Zone::KeepsClear);
        m_probe->onTold = [this] { onChanged(); };
        wl_surface_commit(m_probe->get());
    }
    onChanged();
}

std::string Output::identity() const {
    const std::string identity = DisplayNumbers::identityOf(edidAt(name()));
    return identity.empty() ? name() : identity;
}

/// It is told how much and not where, so as much is left free at the opposite side.
QRect Output::freePlace() const {
    const QSize room = m_probe ? m_probe->size() : QSize();
    if (room.isEmpty()) return m_place;
    const int aside = std::max(m_place.width() - room.width(), 0);
    const int above = std::max(m_place.height() - room.height(), 0);
    return m_place.adjusted(aside, above, -aside, -above);
}

QSize Output::pixels() const {
    return m_transform & WL_OUTPUT_TRANSFORM_90 ? m_mode.transposed() : m_mode;
}

double Output::scale() const { return static_cast<double>(pixels().width()) / place().width(); }

} // namespace WindowServer::Wayland
