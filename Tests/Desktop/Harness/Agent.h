#pragma once

#include "Harness/Desktop.h"

#include <functional>

namespace Harness {

/// What the rows of its menu open, by the steps down to them.
struct Row {
    static constexpr int support = 2, summit = 3, features = 4, settings = 5, about = 6;
};

/// Asks a program to quit that may still run. A test fails whose program does not do so cleanly.
void endCleanly(Process& process);

/// The program under test, running on a desktop until it is ended cleanly.
class Agent {
public:
    /// Waits until the program has put itself up: its icon docked, where there is a tray.
    explicit Agent(Desktop& desktop);
    ~Agent();

    Process& process() { return m_process; }

    void toggle(); ///< A left click on the status item.
    void cover();  ///< Toggles and waits until every monitor is; a failure of the test if not.
    void uncover();

    using Windows = std::vector<ScreenWindow>; ///< From the bottom to the top.

    Windows covers() const; ///< Mapped or not.
    Windows visibleCovers() const;
    Windows buttons() const; ///< On the screen, from the left to the right.
    Windows menus() const;   ///< On the screen, a menu below its submenus.
    Windows windows() const; ///< On the screen, but for covers, buttons, menus and tips.
    Windows panels() const;  ///< Of those an alert, the About panel and the edition window.

    /// Opens the menu at a button, and goes so many rows down.
    void openMenu(int row = 0, size_t button = 0) const;
    void choose(int row) const; ///< At the first button.

    /// True when each monitor has one visible cover of just its size, and there is no other.
    bool isCovered() const;

    static std::vector<std::string> command();

private:
    Windows ours(const std::function<bool(const ScreenWindow&)>& wanted) const;

    Desktop& m_desktop;
    int m_dockedBefore;
    Process m_process;
};

} // namespace Harness
