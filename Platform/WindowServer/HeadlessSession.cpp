#include "WindowServer/HeadlessSession.h"

#include <algorithm>

namespace WindowServer {

namespace {
constexpr int noSuchSurface = 1000;
}

HeadlessSurface::HeadlessSurface(HeadlessSession& session, int number)
    : m_session(session), m_number(number) {
    m_session.m_surfaces.push_back(this);
}

HeadlessSurface::~HeadlessSurface() { std::erase(m_session.m_surfaces, this); }

void HeadlessSession::setDisplays(std::vector<Display> displays) {
    if (m_displays == displays) return;
    m_displays = std::move(displays);
    if (onDisplaysChanged) onDisplaysChanged();
}

void HeadlessSession::setThemeName(const std::string& name) {
    m_themeName = name;
    if (onThemeChanged) onThemeChanged();
}

bool HeadlessSession::grabKey(const KeyChord& chord) {
    if (grantsKeys) grabbedKey = chord;
    return grantsKeys;
}

std::unique_ptr<Surface> HeadlessSession::makeSurface() {
    ++m_surfacesMade;
    return std::make_unique<HeadlessSurface>(*this, grantsNumbers ? m_surfacesMade : 0);
}

int HeadlessSession::setBackgroundBlurRadius(int surfaceNumber, int radius) {
    const auto found = std::find_if(m_surfaces.begin(), m_surfaces.end(), [&](const auto* surface) {
        return surface->number() == surfaceNumber;
    });
    if (found == m_surfaces.end()) return noSuchSurface;
    (*found)->requestedRadius = radius;
    if (blurAnswer == 0) (*found)->radius = radius;
    return blurAnswer;
}

} // namespace WindowServer
