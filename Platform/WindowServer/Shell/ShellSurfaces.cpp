#include "WindowServer/Shell/ShellSurfaces.h"

#include <QDBusArgument>

#include <algorithm>
#include <utility>

namespace WindowServer {

namespace {

QVariantList valuesOf(double deviation, const CGColor& colour) {
    QDBusArgument channels;
    channels.beginStructure();
    channels << colour.red << colour.green << colour.blue << colour.alpha;
    channels.endStructure();
    return {deviation, QVariant::fromValue(channels)};
}

/// As it is over black.
CGColor plain(const CGColor& colour) {
    return {colour.red * colour.alpha, colour.green * colour.alpha, colour.blue * colour.alpha, 1};
}

} // namespace

ShellSurfaces::ShellSurfaces(ShellLink& link) : m_link(link) {
    m_commit.setSingleShot(true);
    QObject::connect(&m_commit, &QTimer::timeout, &m_commit, [this] { commit(); });
}

std::unique_ptr<Surface> ShellSurfaces::makeSurface() {
    auto surface = std::make_unique<Surface>(
        ++m_lastNumber, [this] { m_commit.start(0); },
        [this](const Surface& gone) {
            std::erase(m_surfaces, &gone);
            m_commit.start(0);
        });
    m_surfaces.push_back(surface.get());
    return surface;
}

int ShellSurfaces::setBackgroundBlurRadius(int surfaceNumber, int radius) {
    const auto found = std::ranges::find(m_surfaces, surfaceNumber, &Surface::number);
    if (found == m_surfaces.end()) return illegalArgument;
    (*found)->setRadius(radius);
    return 0;
}

/// The Shell may sleep with the machine, so it is to have done it by then.
void ShellSurfaces::setResting(bool rests) {
    if (std::exchange(m_rests, rests) == rests) return;
    commit();
    if (rests && m_told) m_link.ask("Cover", valuesOf(m_told->deviation, m_told->colour));
}

void ShellSurfaces::attached() {
    m_told.reset();
    commit();
}

std::optional<ShellSurfaces::Cover> ShellSurfaces::wanted() const {
    const auto seen = std::ranges::find_if(m_surfaces, &Surface::wantsToShow);
    if (seen == m_surfaces.end()) return std::nullopt;
    const Surface& surface = **seen;
    if (m_rests) return Cover{0, plain(surface.look().overlay)};
    return Cover{surface.radius() > 1 ? surface.radius() / 2.0 : 0, surface.look().overlay};
}

void ShellSurfaces::commit() {
    const auto cover = wanted();
    if (std::exchange(m_told, cover) != cover) {
        if (cover)
            m_link.tell("Cover", valuesOf(cover->deviation, cover->colour));
        else
            m_link.tell("Uncover");
    }
    const bool covered = cover.has_value();
    if (std::exchange(m_covered, covered) != covered && onCovered) onCovered(covered);
}

} // namespace WindowServer
