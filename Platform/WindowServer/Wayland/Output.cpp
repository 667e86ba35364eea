#include "WindowServer/Wayland/Output.h"

#include "WindowServer/DisplayNumbers.h"

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

Output::Output(const Connection& connection, uint32_t global)
    : m_global(global), m_output(connection.bindOutput(global)) {
    listen();
    if (auto* const manager = connection.globals().outputs) listenToLayout(manager);
}

void Output::listen() {
    static const wl_output_listener listener = {.geometry = Tell<&Output::setGeometry>(),
                                                .mode = Tell<&Output::setMode>(),
                                                .done = Tell<&Output::finish>(),
                                                .scale = Tell<&Output::m_wholeScale>(),
                                                .name = Tell<&Output::m_name>(),
                                                .description = Ignored()};
    wl_output_add_listener(get(), &listener, this);
}

/// Where points are no whole number of pixels, nobody else tells the size in points.
void Output::listenToLayout(zxdg_output_manager_v1* manager) {
    m_layout.reset(zxdg_output_manager_v1_get_xdg_output(manager, get()));
    static const zxdg_output_v1_listener listener = {.logical_position = Tell<&Output::moveTo>(),
                                                     .logical_size = Tell<&Output::resizeTo>(),
                                                     .done = Tell<&Output::finishLayout>(),
                                                     .name = Tell<&Output::m_oldName>(),
                                                     .description = Ignored()};
    zxdg_output_v1_add_listener(m_layout.get(), &listener, this);
}

void Output::setGeometry(int x, int y, int, int, int, const char*, const char*, int transform) {
    m_corner = {x, y};
    m_transform = static_cast<wl_output_transform>(transform);
}

void Output::setMode(uint32_t flags, int width, int height, int) {
    if (flags & WL_OUTPUT_MODE_CURRENT) m_mode = {width, height};
}

void Output::finish() {
    m_isTold = true;
    finishLayout();
}

void Output::finishLayout() {
    if (m_isTold && onChanged) onChanged();
}

std::string Output::identity() const {
    const std::string identity = DisplayNumbers::identityOf(edidAt(name()));
    return identity.empty() ? name() : identity;
}

QSize Output::pixels() const {
    return m_transform & WL_OUTPUT_TRANSFORM_90 ? m_mode.transposed() : m_mode;
}

QRect Output::place() const {
    return m_place.isEmpty() ? QRect(m_corner, pixels() / m_wholeScale) : m_place;
}

double Output::scale() const { return static_cast<double>(pixels().width()) / place().width(); }

} // namespace WindowServer::Wayland
