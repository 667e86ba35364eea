#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Keeps windows of ours above every window of other programs, in the order of their levels. Window
/// managers know nothing of levels, so it watches the screen and puts back what comes above.
class Stacking {
public:
    explicit Stacking(Connection& connection);

    /// In front of the others of its level, unless it is there already.
    void add(xcb_window_t window, int level);
    void remove(xcb_window_t window);
    bool holds(xcb_window_t window) const;

    /// Listens to the root's children while a window of ours, or a cover, has to stay above them;
    /// to the root's own structure in any case.
    void listen(bool covered);

    /// Puts all windows in their order on top of the screen.
    void restack();
    /// The same, where one has come since the last time.
    void restackIfStale();

    /// Restacks where another program's window has come above ours: at once, or at most every few
    /// milliseconds against a program that keeps raising itself.
    void handle(const xcb_generic_event_t& event);

private:
    struct Entry {
        xcb_window_t window;
        int level;
    };

    bool isIntrusion(const xcb_generic_event_t& event) const;
    bool isInOrder() const;
    std::vector<xcb_window_t> wantedTop(const std::vector<xcb_window_t>& onScreen) const;
    void putBack();

    Connection& m_connection;
    std::vector<Entry> m_order; ///< Bottom to top.
    QElapsedTimer m_spell;      ///< Since the current count of restackings began.
    int m_count = 0;
    bool m_stale = false;
    uint32_t m_heard = 0; ///< The event mask on the root.
    QTimer m_later;
};

} // namespace WindowServer
