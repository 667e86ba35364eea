#pragma once

#include "WindowServer/ToolkitWindows.h"

#include <map>
#include <optional>

#include <xcb/shape.h>

namespace WindowServer {

class ToolkitGuard;

/// A window of the toolkit's on the X server. What is asked for it goes over the toolkit's
/// connection, so that the server does it after it has made the window and before it destroys it.
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

    /// Whether it has to be watched and is not yet.
    bool isNew() const { return m_isKept && !m_isWatched; }
    /// Undoes from now on what others do to it. The server knows it by now.
    void watch();
    /// Where its frame is now, that may be other pixels than before.
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
    std::map<uint8_t, std::vector<PixelRect>> m_shapes; ///< By kind, as the extension counts.
    std::optional<xcb_window_t> m_lender;               ///< Whom it has the keyboard from.
    bool m_isKept = false;                              ///< Others must not change it.
    bool m_isWatched = false;
};

/// The text of WM_CLASS: which window it is, and the program, as it is started.
std::string windowClass(const std::string& instance);

/// Waits until the server has the windows that the toolkit has made so far.
void settleToolkit();

/// A picture of `from` in the drawable, which is to count as `area`. Empty where the server
/// refuses, or its pixels are of a kind not known here.
Snapshot takeSnapshot(xcb_connection_t* connection, xcb_drawable_t drawable, const PixelRect& from,
                      const PixelRect& area);

} // namespace WindowServer
