#include "Harness/Agent.h"

#include "Harness/Await.h"
#include "Harness/Keys.h"

#include <algorithm>
#include <csignal>

#include <gtest/gtest.h>

namespace Harness {

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

Agent::~Agent() { endCleanly(m_process); }

void endCleanly(Process& process) {
    if (!process.status()) {
        process.send(SIGTERM);
        EXPECT_EQ(process.awaitEnd(), 0) << process.errors();
    }
    EXPECT_NE(process.status(), 128 + SIGSEGV) << process.errors();
    for (const char* complaint : {"Sanitizer", "runtime error", "X Error", "XCB error"})
        EXPECT_EQ(process.errors().find(complaint), std::string::npos) << process.errors();
}

void Agent::toggle() {
    const std::vector<Area> icons = m_desktop.tray->icons();
    ASSERT_FALSE(icons.empty()) << "no status item";
    m_desktop.input.click(icons.back());
}

void Agent::cover() {
    toggle();
    ASSERT_SOON(isCovered()) << m_process.errors();
}

void Agent::uncover() {
    toggle();
    ASSERT_SOON(visibleCovers().empty()) << m_process.errors();
}

Agent::Windows Agent::ours(const std::function<bool(const ScreenWindow&)>& wanted) const {
    Windows windows = m_desktop.screen.windows();
    std::erase_if(windows, [&](const ScreenWindow& window) {
        return window.className != "nimbrel-lite" || !wanted(window);
    });
    return windows;
}

Agent::Windows Agent::covers() const {
    return ours([](const auto& window) { return window.instance.starts_with("cover:"); });
}

Agent::Windows Agent::visibleCovers() const {
    return ours([](const auto& window) { // But for those parked beyond the screen.
        return window.instance.starts_with("cover:") && window.viewable && window.area.x >= 0;
    });
}

Agent::Windows Agent::buttons() const {
    Windows windows = ours([](const auto& window) {
        return window.viewable && window.instance.starts_with("button:");
    });
    std::ranges::sort(windows, {}, [](const auto& window) { return window.area.x; });
    return windows;
}

Agent::Windows Agent::menus() const {
    return ours([](const auto& window) { return window.viewable && window.instance == "menu"; });
}

Agent::Windows Agent::windows() const {
    return ours([](const auto& window) {
        return window.viewable && window.area.width >= 200 && window.instance != "menu" &&
               window.instance != "tip" && window.instance.find(':') == std::string::npos;
    });
}

Agent::Windows Agent::panels() const {
    Windows panels = windows();
    std::erase_if(panels, [](const auto& window) { return !window.overrideRedirect; });
    return panels;
}

void Agent::openMenu(int row, size_t button) const {
    m_desktop.input.click(buttons().at(button).area, 3);
    ASSERT_SOON(menus().size() == 1);
    m_desktop.input.strike(downKey, row);
}

void Agent::choose(int row) const {
    ASSERT_NO_FATAL_FAILURE(openMenu(row));
    m_desktop.input.strike(returnKey);
    ASSERT_SOON(menus().empty());
}

bool Agent::isCovered() const {
    std::vector<Area> areas;
    for (const ScreenWindow& window : visibleCovers())
        areas.push_back(window.area);
    return !areas.empty() && std::ranges::is_permutation(areas, m_desktop.screen.monitors());
}

} // namespace Harness
