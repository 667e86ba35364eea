#pragma once

#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/TestWindow.h"

#include <gtest/gtest.h>

namespace Harness {

/// What most tests begin with: a desktop of their own, the program once they start it, and hands.
struct OnDesktop : testing::Test {
    explicit OnDesktop(std::unique_ptr<XServer> server = Desktop::twoMonitors())
        : desktop(std::move(server)) {}

    /// Starts the program, anew where it runs, and waits for its buttons.
    void start() {
        agent.reset();
        agent.emplace(desktop);
        ASSERT_SOON(agent->buttons().size() == desktop.screen.monitors().size());
    }
    void expectCovered(bool covered) const {
        EXPECT_SOON(covered ? agent->isCovered() : agent->visibleCovers().empty());
    }

    void click(const Area& area, uint8_t button = 1) const { desktop.input.click(area, button); }
    void strike(const std::vector<uint8_t>& keys) const { desktop.input.strike(keys); }

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

/// What a test's name can have of a word: its letters and numbers.
inline std::string letters(std::string word) {
    std::erase_if(word, [](char each) { return each == '-' || each == '.'; });
    return word;
}

} // namespace Harness
