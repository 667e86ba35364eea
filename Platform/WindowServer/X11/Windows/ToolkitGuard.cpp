#include "WindowServer/X11/Windows/ToolkitGuard.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/Placement.h"
#include "WindowServer/X11/Windows/Stacking.h"

#include <QGuiApplication>

#include <utility>

#include <xcb/shape.h>

namespace WindowServer {

namespace {

xcb_connection_t* toolkit() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

} // namespace

void settleToolkit() {
    await(toolkit(), xcb_get_input_focus_reply, xcb_get_input_focus(toolkit()));
}

Snapshot takeSnapshot(xcb_connection_t* connection, xcb_drawable_t drawable, const PixelRect& from,
                      const PixelRect& area) {
    const auto image = await(
        connection, xcb_get_image_reply,
        xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<int16_t>(from.x),
                      static_cast<int16_t>(from.y), static_cast<uint16_t>(from.width),
                      static_cast<uint16_t>(from.height), ~0u));
    const int count = area.width * area.height;
    if (!image || image->depth != 24 || xcb_get_image_data_length(image.get()) < 4 * count)
        return {};
    const auto* const pixels = reinterpret_cast<uint32_t*>(xcb_get_image_data(image.get()));
    return {area, {pixels, pixels + count}};
}

/// A window of the toolkit's. Requests go over the toolkit's connection, so that they are carried
/// out between the window's creation and its end.
class HeldWindow : public ToolkitWindow {
public:
    HeldWindow(ToolkitGuard& guard, xcb_window_t window) : m_guard(guard), m_window(window) {}

    ~HeldWindow() override {
        giveKeyboardBack();
        m_guard.m_windows.erase(m_window);
        if (!m_guard.m_stacking.holds(m_window)) return;
        m_guard.m_stacking.remove(m_window);
        m_guard.onChanged();
    }
    HeldWindow(const HeldWindow&) = delete;
    HeldWindow& operator=(const HeldWindow&) = delete;

    void setName(const std::string& instance) override { setClass(toolkit(), m_window, instance); }

    void setShadowMargin(int margin) override {
        const auto set = [this](const char* property, const std::vector<uint32_t>& numbers) {
            setNumbers(toolkit(), m_window, m_connection.atom(property), XCB_ATOM_CARDINAL,
                       numbers);
        };
        set("_GTK_FRAME_EXTENTS", std::vector<uint32_t>(4, static_cast<uint32_t>(margin)));
        set("_COMPTON_SHADOW", {0}); // Some go by this one alone.
    }

    void setLevel(int level) override {
        m_guard.m_stacking.add(m_window, level);
        m_guard.onChanged();
        keep();
    }

    bool place(const CGRect& frame) override {
        m_frame = frame;
        keep();
        restorePlace();
        return true;
    }

    /// Puts it back to its frame, whose pixels change with the displays.
    void restorePlace() const {
        const PixelRect wanted = wantedPlace();
        if (isEmpty(wanted)) return;
        configure(toolkit(), m_window, wanted);
        xcb_flush(toolkit());
    }

    void setShape(Region region, const std::vector<PixelRect>& rectangles) override {
        if (!m_connection.hasShape()) return;
        const uint8_t kind = region == Region::Input ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING;
        m_shapes[kind] = rectangles;
        keep();
        WindowServer::setShape(toolkit(), m_window, *m_shapes.find(kind));
        xcb_flush(toolkit());
    }

    /// The window is mapped by then.
    void takeKeyboard() override {
        const xcb_window_t former = m_guard.keyboardOwner();
        if (former == m_window) return;
        // Taken back from another window of ours that borrowed it in turn, the first lender stays.
        const auto lender = m_guard.find(former);
        if (!m_lender || !lender || !lender->m_lender) m_lender = former;
        xcb_set_input_focus(toolkit(), XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
        xcb_flush(toolkit());
    }

    Snapshot grabAround(int margin) override {
        xcb_connection_t* const xcb = toolkit();
        const xcb_window_t root = m_connection.root();
        const auto place = await(xcb, xcb_get_geometry_reply, xcb_get_geometry(xcb, m_window));
        const auto corner = // In a tray its geometry is relative to the tray's window.
            await(xcb, xcb_translate_coordinates_reply,
                  xcb_translate_coordinates(xcb, m_window, root, 0, 0));
        const auto screen = await(xcb, xcb_get_geometry_reply, xcb_get_geometry(xcb, root));
        if (!place || !corner || !screen || !m_connection.hasPlainPixels()) return {};
        const PixelRect area =
            intersection(grown({corner->dst_x, corner->dst_y, place->width, place->height}, margin),
                         sized(screen->width, screen->height));
        if (isEmpty(area)) return {};
        return takeSnapshot(xcb, root, area, translated(area, -corner->dst_x, -corner->dst_y));
    }

    void handle(const xcb_generic_event_t& event) {
        if (!m_isKept) return;
        const bool isTaken =
            mend(m_connection, {m_window, m_connection.root(), wantedPlace(), m_shapes}, event);
        if (!isTaken || !m_guard.m_stacking.holds(m_window) || !onGone) return;
        const auto tell = onGone; // This object may not outlive the call.
        tell();
    }

private:
    /// What others do to it is undone from here on. The server has made it by then.
    void keep() {
        if (std::exchange(m_isKept, true)) return;
        settleToolkit();
        if (m_connection.hasShape()) xcb_shape_select_input(m_connection.xcb(), m_window, true);
    }

    PixelRect wantedPlace() const {
        const Display* const display = m_frame ? m_guard.m_displays.at(*m_frame) : nullptr;
        return display ? pixelsOf(*m_frame, *display) : PixelRect();
    }

    /// To the window that had it, if that still stands on the screen; else to whatever the pointer
    /// is on.
    void giveKeyboardBack() const {
        if (!m_lender || m_guard.keyboardOwner() != m_window) return;
        xcb_connection_t* const xcb = m_connection.xcb();
        const auto attributes = m_connection.reply(xcb_get_window_attributes_reply,
                                                   xcb_get_window_attributes(xcb, *m_lender));
        const bool stands = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_PARENT,
                            stands ? *m_lender : xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT},
                            XCB_CURRENT_TIME);
        m_guard.keyboardOwner(); // The server has done it before the window goes.
    }

    ToolkitGuard& m_guard;
    Connection& m_connection = m_guard.m_connection;
    const xcb_window_t m_window;
    std::optional<CGRect> m_frame;
    Shapes m_shapes;
    std::optional<xcb_window_t> m_lender; ///< Who had the keyboard before it.
    bool m_isKept = false;                ///< Others' changes are undone.
};

// --- All of them

std::shared_ptr<ToolkitWindow> ToolkitGuard::hold(WindowId window) {
    const auto id = static_cast<xcb_window_t>(window);
    if (auto known = find(id)) return known;
    const auto made = std::make_shared<HeldWindow>(*this, id);
    m_windows[id] = made;
    return made;
}

std::shared_ptr<HeldWindow> ToolkitGuard::find(xcb_window_t window) const {
    const auto found = m_windows.find(window);
    return found == m_windows.end() ? nullptr : found->second.lock();
}

bool ToolkitGuard::areComposited() const { return m_compositor.isOwned(); }

bool ToolkitGuard::hasManager() const {
    const auto check =
        m_connection.numbers(m_connection.root(), m_connection.atom("_NET_SUPPORTING_WM_CHECK"), 1);
    // A manager that has died may have left its name behind, but not its window.
    return !check.empty() &&
           m_connection.reply(xcb_get_window_attributes_reply,
                              xcb_get_window_attributes(m_connection.xcb(), check.front()));
}

xcb_window_t ToolkitGuard::keyboardOwner() const {
    const auto focus =
        m_connection.reply(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection.xcb()));
    return focus ? focus->focus : xcb_window_t{XCB_NONE};
}

void ToolkitGuard::placeAgain() const {
    for (const auto& [window, held] : m_windows)
        if (const auto kept = held.lock()) kept->restorePlace();
}

void ToolkitGuard::handle(const xcb_generic_event_t& event) {
    const bool isShape =
        m_connection.hasShape() && typeOf(event) == m_connection.events().shape + XCB_SHAPE_NOTIFY;
    const auto held =
        find(isShape ? as<xcb_shape_notify_event_t>(event).affected_window : subjectOf(event));
    if (held) held->handle(event);
}

} // namespace WindowServer
