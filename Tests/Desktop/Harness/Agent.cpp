#include "Harness/Agent.h"

#include "Harness/Await.h"
#include "Harness/Keys.h"

#include <algorithm>
#include <csignal>

#include <gtest/gtest.h>

namespace Harness {

namespace {

std::vector<Area> sorted(std::vector<Area> areas) {
    std::sort(areas.begin(), areas.end(), [](const Area& a, const Area& b) {
        return std::tie(a.x, a.y, a.width, a.height) < std::tie(b.x, b.y, b.width, b.height);
    });
    return areas;
}

} // namespace

std::vector<std::string> Agent::command() {
    const char* chosen = std::getenv("NIMBREL_LITE");
    return {chosen ? chosen : NIMBREL_LITE};
}

Agent::Agent(Desktop& desktop)
    : m_desktop(desktop), m_dockedBefore(desktop.tray ? desktop.tray->docked() : 0),
      m_process(command(), desktop.environment()) {
    const bool ready = await([this] {
        if (m_process.status()) return true;
        return m_desktop.tray ? m_desktop.tray->docked() > m_dockedBefore : !covers().empty();
    });
    EXPECT_TRUE(ready && !m_process.status())
        << "the program did not start: " << m_process.errors();
}

Agent::~Agent() {
    if (!m_process.status()) {
        m_process.send(SIGTERM);
        EXPECT_EQ(m_process.awaitEnd(), 0) << m_process.errors();
    }
    for (const char* complaint : {"Sanitizer", "runtime error", "X Error", "XCB error"})
        EXPECT_EQ(m_process.errors().find(complaint), std::string::npos) << m_process.errors();
}

void Agent::toggle() {
    const std::vector<Area> icons = m_desktop.tray->icons();
    ASSERT_FALSE(icons.empty()) << "no status item";
    const Area icon = icons.back();
    m_desktop.input.move(icon.x + icon.width / 2, icon.y + icon.height / 2);
    m_desktop.input.click(1);
}

void Agent::cover() {
    toggle();
    ASSERT_TRUE(await([this] { return isCovered(); })) << m_process.errors();
}

void Agent::uncover() {
    toggle();
    ASSERT_TRUE(await([this] { return visibleCovers().empty(); })) << m_process.errors();
}

std::vector<ScreenWindow> Agent::covers() const {
    std::vector<ScreenWindow> windows = m_desktop.screen.windows();
    std::erase_if(windows, [](const ScreenWindow& window) {
        return window.className != "nimbrel-lite" || !window.instance.starts_with("cover:");
    });
    return windows;
}

std::vector<ScreenWindow> Agent::visibleCovers() const {
    std::vector<ScreenWindow> windows = covers();
    std::erase_if(windows, [](const ScreenWindow& window) {
        return !window.viewable || window.area.x < 0; // parked beyond the screen
    });
    return windows;
}

std::vector<ScreenWindow> Agent::buttons() const {
    std::vector<ScreenWindow> windows = m_desktop.screen.windows();
    std::erase_if(windows, [](const ScreenWindow& window) {
        return !window.viewable || !window.instance.starts_with("button:");
    });
    std::sort(windows.begin(), windows.end(),
              [](const auto& a, const auto& b) { return a.area.x < b.area.x; });
    return windows;
}

std::vector<ScreenWindow> Agent::menus() const {
    std::vector<ScreenWindow> windows = m_desktop.screen.windows();
    std::erase_if(windows, [](const ScreenWindow& window) {
        return !window.viewable || window.instance != "menu" || window.className != "nimbrel-lite";
    });
    return windows;
}

std::vector<ScreenWindow> Agent::windows() const {
    auto all = m_desktop.screen.windows();
    std::erase_if(all, [](const auto& window) {
        return !window.viewable || window.className != "nimbrel-lite" || window.area.width < 200 ||
               window.instance == "menu" || window.instance.find(':') != std::string::npos;
    });
    return all;
}

std::vector<ScreenWindow> Agent::panels() const {
    std::vector<ScreenWindow> windows = m_desktop.screen.windows();
    std::erase_if(windows, [](const ScreenWindow& window) {
        return !window.viewable || !window.overrideRedirect || window.className != "nimbrel-lite" ||
               window.instance == "menu" || window.instance == "tip" ||
               window.instance.find(':') != std::string::npos;
    });
    return windows;
}

void Agent::choose(int row) const {
    const Area button = buttons().at(0).area;
    m_desktop.input.move(button.x + button.width / 2, button.y + button.height / 2);
    m_desktop.input.click(3);
    ASSERT_TRUE(await([this] { return menus().size() == 1; }));
    for (int i = 0; i < row; ++i)
        m_desktop.input.strike(downKey);
    m_desktop.input.strike(returnKey);
    ASSERT_TRUE(await([this] { return menus().empty(); }));
}

bool Agent::isCovered() const {
    std::vector<Area> areas;
    for (const ScreenWindow& window : visibleCovers())
        areas.push_back(window.area);
    return !areas.empty() && sorted(areas) == sorted(m_desktop.screen.monitors());
}

} // namespace Harness
