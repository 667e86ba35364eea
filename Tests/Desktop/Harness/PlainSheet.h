#pragma once

#include "Harness/XClient.h"

#include <atomic>
#include <thread>

namespace Harness {

/// A plain window over an area that a client of its own keeps there, with as little as it takes and
/// at once: what it needs for that is what the machine and the server need, whoever does it.
class PlainSheet {
public:
    PlainSheet(const std::string& display, const xcb_rectangle_t& area);
    ~PlainSheet();
    PlainSheet(const PlainSheet&) = delete;
    PlainSheet& operator=(const PlainSheet&) = delete;

    xcb_window_t window() const { return m_window; }

private:
    void make();
    void put();
    void dropShapes();
    void run();
    void handle(const xcb_generic_event_t& event);

    XClient m_client;
    xcb_rectangle_t m_area;
    uint8_t m_shapeNotify;
    std::atomic<xcb_window_t> m_window;
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

} // namespace Harness
