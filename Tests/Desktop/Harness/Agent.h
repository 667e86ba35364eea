#pragma once

#include "Harness/Desktop.h"

namespace Harness {

/// The program under test, running on a desktop. At the end of its life it is asked to quit, and a
/// test fails whose program does not do so cleanly.
class Agent {
public:
    /// Waits until the program has put itself up: its icon docked, where there is a tray.
    explicit Agent(Desktop& desktop);
    ~Agent();

    Process& process() { return m_process; }

    void toggle(); ///< A left click on the status item.
    void
    cover(); ///< Toggles and waits until every monitor is covered; a failure of the test if not.
    void uncover();

    std::vector<ScreenWindow> covers() const; ///< Mapped or not, from the bottom to the top.
    std::vector<ScreenWindow> visibleCovers() const;

    std::vector<ScreenWindow> buttons() const; ///< On the screen, from the left to the right.

    /// Opens the menu at the first button, goes so many rows down, and chooses that one.
    void choose(int row) const;

    std::vector<ScreenWindow> menus() const; ///< On the screen, a menu below its submenus.

    /// Its windows but for covers, buttons, menus and tips, the newest last.
    std::vector<ScreenWindow> windows() const;

    /// An alert, the About panel and the edition window, on the screen.
    std::vector<ScreenWindow> panels() const;

    /// True when each monitor has one visible cover of just its size, and there is no other.
    bool isCovered() const;

    static std::vector<std::string> command();

private:
    Desktop& m_desktop;
    int m_dockedBefore;
    Process m_process;
};

} // namespace Harness
