// The program's own connection to the X server: apart from Qt's, so that the errors that come of
// other programs' windows dying under a capture never reach Qt.
#pragma once

#include "WindowServer/X11/Reply.h"

#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <xcb/xcb.h>
#include <xcb/xcb_renderutil.h>

namespace WindowServer {

class Connection : public QObject {
public:
    /// Null where no server answers at DISPLAY. What the server lacks, and what comes of it, is
    /// told in one line of the log.
    static std::unique_ptr<Connection> open();
    ~Connection() override;

    xcb_connection_t* xcb() const { return m_xcb; }
    const xcb_screen_t& screen() const { return *m_screen; }
    int screenNumber() const { return m_screenNumber; }
    xcb_window_t root() const { return m_screen->root; }

    /// First event code of each extension; 0 where the server lacks it.
    struct Events {
        uint8_t damage = 0;
        uint8_t randr = 0;
        uint8_t shape = 0;
    };
    const Events& events() const { return m_events; }

    /// Whether the server has all that a live blur takes: Composite, Damage, Render, XFixes and
    /// plain pixels.
    bool canBlurLive() const { return m_canBlurLive; }
    /// Whether a still one can be had: the screen itself is of plain pixels.
    bool canBlurStill() const;
    /// Whether Render can scale pictures into the screen's own windows.
    bool canScaleToScreen() const { return m_rgbFormat && formatOf(m_screen->root_visual); }
    /// Asks whether the server only serves the X11 windows of a Wayland session. A window there
    /// swallows the clicks that are meant for Wayland's own windows below, whatever it asks for,
    /// and those are not seen by it.
    bool isXwayland() const;
    bool hasComposite() const { return m_hasComposite; }
    bool hasShape() const { return m_events.shape != 0; }
    /// Whether pixels of depth 24 take 32 bits in the byte order of this machine.
    bool hasPlainPixels() const;

    xcb_render_pictformat_t rgbFormat() const { return m_rgbFormat; } ///< Depth 24, no alpha.
    /// The picture format of a visual; 0 where Render knows none.
    xcb_render_pictformat_t formatOf(xcb_visualid_t visual) const;
    bool hasAlpha(xcb_render_pictformat_t format) const;

    xcb_atom_t atom(std::string_view name);
    std::string nameOf(xcb_atom_t atom) const;
    /// The window that owns the selection, if any.
    xcb_window_t ownerOf(xcb_atom_t selection) const;
    uint32_t newId() const { return xcb_generate_id(m_xcb); }
    void flush() const { xcb_flush(m_xcb); }
    /// Waits until the server has carried out all that it was asked for.
    void settle() const { reply(xcb_get_input_focus_reply, xcb_get_input_focus(m_xcb)); }

    template <typename Reply, typename Cookie>
    Owned<Reply> reply(Reply* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                       Cookie cookie) const {
        return await(m_xcb, fetch, cookie);
    }

    /// As `numbersOf`, and at most so many.
    std::vector<uint32_t> numbers(xcb_window_t window, xcb_atom_t property, uint32_t most) const;
    /// Bottom to top. None where the window has gone.
    std::vector<xcb_window_t> children(xcb_window_t window) const;

    void setAttribute(xcb_window_t window, uint32_t which, uint32_t value) const {
        xcb_change_window_attributes(m_xcb, window, which, &value);
    }
    /// Above or below the sibling, or all of its siblings.
    void stack(xcb_window_t window, uint32_t mode, xcb_window_t sibling = XCB_NONE) const;

    /// Delivers events from the running event loop to `onEvent`. A lost server ends the process at
    /// once with status 1.
    void attach();
    std::function<void(const xcb_generic_event_t&)> onEvent;
    /// Ignores refusals of all that was requested so far: after another program destroyed a window
    /// of ours, or after one refusal, the requests that depend on it fail too.
    void excuseRefusals() { m_excusedUntil = xcb_no_operation(m_xcb).sequence; }
    /// Called on an unexpected refusal: what was drawn since cannot be trusted.
    std::function<void()> onRefusal;

private:
    Connection(xcb_connection_t* connection, int screenNumber);
    void intern(std::span<const std::string_view> names);

    void dispatch(xcb_generic_event_t* (*poll)(xcb_connection_t*));
    Owned<xcb_generic_event_t> nextEvent(xcb_generic_event_t* (*poll)(xcb_connection_t*)) const;
    bool isRace(const xcb_generic_error_t& error) const;
    bool isExcused(const xcb_generic_error_t& error) const;

    xcb_connection_t* m_xcb;
    int m_screenNumber;
    const xcb_screen_t* m_screen;
    Events m_events;
    uint8_t m_damageError = 0;
    std::optional<uint32_t> m_excusedUntil; ///< The number of a request.
    std::map<std::string, xcb_atom_t, std::less<>> m_atoms;
    bool m_hasComposite = false;
    bool m_canBlurLive = false;
    const xcb_render_query_pict_formats_reply_t* m_formats = nullptr;
    xcb_render_pictformat_t m_rgbFormat = 0;
};

/// Listens to a panel's properties and its end. Each such request replaces the one before, so all
/// who listen to panels ask for the same events.
inline void listenToPanel(const Connection& connection, xcb_window_t panel) {
    connection.setAttribute(panel, XCB_CW_EVENT_MASK,
                            XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
}

} // namespace WindowServer
