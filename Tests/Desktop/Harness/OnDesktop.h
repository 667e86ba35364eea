#pragma once

#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/TestWindow.h"

#include <gtest/gtest.h>

namespace Harness {

/// What most tests begin with: a desktop of their own, the program once they start it, and hands.
struct OnDesktop : testing::Test {
    void start() {
        agent.emplace(desktop);
        ASSERT_TRUE(await([&] { return agent->buttons().size() == 2; }));
    }

    void click(const Area& area, uint8_t button = 1) const { desktop.input.click(area, button); }
    /// One key after the other.
    void strike(const std::vector<uint8_t>& keys) const {
        for (const uint8_t key : keys)
            desktop.input.strike(key);
    }
    void strikeTogether(const std::vector<uint8_t>& keys) const {
        desktop.input.strikeTogether(keys);
    }

    Desktop desktop;
    std::optional<Agent> agent;
};

/// With a window of another program, which has the keyboard at first.
struct BesidePaper : OnDesktop {
    BesidePaper() {
        paper.show();
        paper.takeFocus();
        desktop.input.move(960, 300);
    }
    bool paperHasKeyboard() const {
        return await([&] { return desktop.screen.focus() == paper.number(); });
    }

    TestWindow paper{desktop.display(), {200, 200, 400, 300}};
};

} // namespace Harness
