#pragma once

#include "WindowServer/ToolkitWindows.h"

#include <map>
#include <optional>

#include <xcb/shape.h>

namespace WindowServer {

class ToolkitGuard;

/// A window of the toolkit's on the X server. Requests go over the toolkit's connection, so that
/// they are carried out between the window's creation and its end.
class HeldWindow : public ToolkitWindow, public std::enable_shared_from_this<HeldWindow> {
public:
    HeldWindow(ToolkitGuard& guard, WindowId window);
    ~HeldWindow() override;
    HeldWindow(const HeldWindow&) = delete;
    HeldWindow& operator=(const HeldWindow&) = delete;

    void setName(const std::string& instance) override;
    void setShadowMargin(int margin) override;
    void setLevel(int level) override;
    bool place(const CGRect& frame) override;
    void setShape(Region region, const std::vector<PixelRect>& rectangles) override;
    void takeKeyboard() override;
    Snapshot grabAround(int margin) override;

    /// Whether it is still to be watched.
    bool isNew() const { return m_isKept && !m_isWatched; }
    /// Undoes from now on what others do to it. The server has made it by then.
    void watch();
    /// Puts it back to its frame, whose pixels change with the displays.
    void restorePlace() const;
    void handle(const xcb_generic_event_t& event);

private:
    void keep();
    PixelRect wantedPlace() const;
    void setNumbers(const char* property, const std::vector<uint32_t>& numbers) const;
    void giveKeyboardBack() const;
    void handleConfigure(const xcb_configure_notify_event_t& event) const;
    void handleShape(const xcb_shape_notify_event_t& event) const;
    void sendShape(uint8_t kind) const;
    void restoreShape(uint8_t kind) const;

    ToolkitGuard& m_guard;
    const xcb_window_t m_window;
    std::optional<CGRect> m_frame;
    std::map<uint8_t, std::vector<PixelRect>> m_shapes; ///< By kind: XCB_SHAPE_SK_INPUT.
    std::optional<xcb_window_t> m_lender;               ///< Who had the keyboard before it.
    bool m_isKept = false;                              ///< Others' changes are undone.
    bool m_isWatched = false;
};

/// The text of WM_CLASS: the window's name and the program's.
std::string windowClass(const std::string& instance);

/// Waits until the server has the windows that the toolkit has made so far.
void settleToolkit();

/// The drawable's pixels at `from`, with `area` as their place. Empty where the server refuses or
/// its pixels are not of 24 bits.
Snapshot takeSnapshot(xcb_connection_t* connection, xcb_drawable_t drawable, const PixelRect& from,
                      const PixelRect& area);

} // namespace WindowServer
