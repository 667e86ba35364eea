#pragma once

#include "Harness/Desktop.h"
#include "Harness/TestWindow.h"

#include <memory>
#include <vector>

namespace Benchmarks {

/// A desktop as someone works on it: a light wallpaper and seven windows, spread over the monitors.
class Scenery {
public:
    static constexpr uint32_t wallpaper = 0xE8E8E8;
    static constexpr Harness::Area frame = {0, 0, 1920, 1080};
    static constexpr Harness::Area largeFrame = {0, 0, 3840, 2160};
    static constexpr Harness::Area smallWindow = {860, 440, 200, 200};

    /// One monitor or four, each of the size of `frame`.
    static std::unique_ptr<Harness::XServer> monitors(int count);

    /// One monitor of this size, or two side by side.
    static std::unique_ptr<Harness::XServer> monitor(int width, int height,
                                                     std::vector<std::string> launcher = {});
    static std::unique_ptr<Harness::XServer> pair(const Harness::Area& each);

    /// The windows are as large beside a monitor as they are beside `frame`. Instead of the seven
    /// there may be so many maximised ones, which leave room for a panel.
    explicit Scenery(Harness::Desktop& desktop, size_t maximised = 0);

    const Harness::TestWindow& window(size_t index) const { return *m_windows.at(index); }
    std::vector<xcb_window_t> windows() const;

private:
    void hangWallpaper() const;

    Harness::XClient m_client;
    std::vector<std::unique_ptr<Harness::TestWindow>> m_windows;
};

} // namespace Benchmarks
