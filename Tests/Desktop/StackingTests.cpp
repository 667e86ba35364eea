#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/TestWindow.h"

#include <algorithm>
#include <csignal>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr Area spot = {700, 300, 200, 100};

bool showsMarker(const Desktop& desktop) {
    return desktop.screen.grab({spot.x + spot.width / 2, spot.y + spot.height / 2, 1, 1})
        .isAll(marker);
}

/// How long each of several things took, in milliseconds.
class Times {
public:
    void add(double milliseconds) { m_times.push_back(milliseconds); }
    double longest() const { return m_times.empty() ? 0 : std::ranges::max(m_times); }

    void report(const char* what) {
        std::ranges::sort(m_times);
        const double median = m_times.empty() ? 0 : m_times[m_times.size() / 2];
        std::cout << what << ": median " << median << " ms, longest " << longest() << " ms of "
                  << m_times.size() << "\n";
    }

private:
    std::vector<double> m_times;
};

std::unique_ptr<Process> startWindowManager(const Desktop& desktop) {
    auto openbox = std::make_unique<Process>(std::vector<std::string>{"openbox", "--sm-disable"},
                                             desktop.environment());
    EXPECT_TRUE(await([&] { return desktop.screen.selectionOwner("WM_S0") != XCB_NONE; }))
        << openbox->errors();
    return openbox;
}

void expectNothingAbove(const Desktop& desktop, const Agent& agent) {
    EXPECT_TRUE(await([&] {
        const auto windows = desktop.screen.windows();
        const auto top = std::find_if(windows.rbegin(), windows.rend(),
                                      [](const auto& window) { return window.viewable; });
        return top != windows.rend() && top->className == "nimbrel-lite";
    }));
    EXPECT_TRUE(await([&] { return !showsMarker(desktop); }));
    EXPECT_TRUE(agent.isCovered());
}

} // namespace

TEST(TimedStacking, APopupIsCoveredAgainBeforeAnyoneCanReadIt) {
    Desktop desktop;
    Agent agent(desktop);
    agent.cover();
    TestWindow popup(desktop.display(), spot);
    Times times;

    for (int i = 0; i < 200; ++i) {
        popup.show();
        popup.raise();
        const auto start = Clock::now();
        ASSERT_TRUE(await([&] { return !showsMarker(desktop); })) << "popup " << i;
        times.add(millisecondsSince(start));
        popup.hide();
    }

    times.report("a popup is readable for");
    EXPECT_LE(times.longest(), 50);
}

TEST(TimedStacking, AWindowThatRaisesItselfWinsNeitherTheScreenNorTheProcessor) {
    Desktop desktop;
    Agent agent(desktop);
    agent.cover();
    TestWindow rival(desktop.display(), spot);
    rival.show();
    Times readable;
    const double used = agent.process().processorTime();
    const auto start = Clock::now();

    auto lastRaise = start;
    std::optional<Clock::time_point> seenSince;
    while (millisecondsSince(start) < 2000) {
        if (millisecondsSince(lastRaise) >= 5) {
            lastRaise = Clock::now();
            rival.raise();
        }
        if (showsMarker(desktop)) {
            if (!seenSince) seenSince = Clock::now();
        } else if (seenSince) {
            readable.add(millisecondsSince(*seenSince));
            seenSince.reset();
        }
    }
    const double share = (agent.process().processorTime() - used) * 1000 / millisecondsSince(start);

    if (seenSince) readable.add(millisecondsSince(*seenSince));
    readable.report("the rival is readable for");
    std::cout << "the program takes " << share * 100 << " % of a processor\n";
    EXPECT_LE(readable.longest(), 50);
    EXPECT_LE(share, 0.5);
    EXPECT_TRUE(await([&] { return !showsMarker(desktop); }));
}

TEST(Stacking, NoManagedWindowOfAnyStateStandsAbove) {
    Desktop desktop;
    const auto manager = startWindowManager(desktop);
    Agent agent(desktop);
    agent.cover();
    const std::vector<std::vector<std::string>> states = {
        {},
        {"_NET_WM_STATE_ABOVE"},
        {"_NET_WM_STATE_FULLSCREEN"},
        {"_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_ABOVE"},
    };

    for (const auto& state : states) {
        TestWindow window(desktop.display(), spot, TestWindow::Kind::Managed);
        window.setStates(state);
        window.show();
        ASSERT_TRUE(await([&] { return window.isViewable(); }));
        window.raise();
        expectNothingAbove(desktop, agent);
    }
}

TEST(Stacking, OutlivesTheWindowManager) {
    Desktop desktop;
    TestWindow window(desktop.display(), spot, TestWindow::Kind::Managed);
    window.setStates({"_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_ABOVE"});
    window.show();
    auto manager = startWindowManager(desktop);
    Agent agent(desktop);
    agent.cover();
    expectNothingAbove(desktop, agent);

    for (const int end : {SIGTERM, SIGKILL}) {
        manager->send(end);
        ASSERT_TRUE(manager->awaitEnd());
        expectNothingAbove(desktop, agent);
        manager = startWindowManager(desktop);
        expectNothingAbove(desktop, agent);
    }
}

TEST(Stacking, WhatOthersDoToTheCoverIsUndone) {
    Desktop desktop;
    TestWindow window(desktop.display(), spot);
    window.show();
    Agent agent(desktop);
    agent.cover();
    const XClient& foe = window.client();
    const std::vector<std::pair<const char*, std::function<void(xcb_window_t)>>> attacks = {
        {"lower",
         [&](xcb_window_t cover) {
             const uint32_t below = XCB_STACK_MODE_BELOW;
             xcb_configure_window(foe, cover, XCB_CONFIG_WINDOW_STACK_MODE, &below);
         }},
        {"move",
         [&](xcb_window_t cover) {
             const uint32_t values[] = {2000, 500};
             xcb_configure_window(foe, cover, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
         }},
        {"shrink",
         [&](xcb_window_t cover) {
             const uint32_t values[] = {10, 10};
             xcb_configure_window(foe, cover, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                                  values);
         }},
        {"unmap", [&](xcb_window_t cover) { xcb_unmap_window(foe, cover); }},
    };

    for (const auto& [name, attack] : attacks) {
        for (const ScreenWindow& cover : agent.visibleCovers())
            attack(cover.number);
        foe.settle();
        EXPECT_TRUE(await([&] { return agent.isCovered() && !showsMarker(desktop); })) << name;
    }
}
