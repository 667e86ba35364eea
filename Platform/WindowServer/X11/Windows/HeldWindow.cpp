#include "WindowServer/X11/Windows/HeldWindow.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/DisplayList.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/Placement.h"
#include "WindowServer/X11/Windows/Stacking.h"
#include "WindowServer/X11/Windows/ToolkitGuard.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstring>
#include <tuple>

namespace WindowServer {

namespace {

xcb_connection_t* toolkit() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

/// Cut into lines and sorted, to compare shapes: the server joins rectangles as it likes.
std::vector<PixelRect> linesOf(const std::vector<PixelRect>& rectangles) {
    std::vector<PixelRect> lines;
    for (const PixelRect& r : rectangles)
        for (int y = r.y; y < r.y + r.height; ++y)
            lines.push_back({r.x, y, r.width, 1});
    std::ranges::sort(lines, {}, [](const PixelRect& r) { return std::tuple(r.y, r.x, r.width); });
    return lines;
}

} // namespace

std::string windowClass(const std::string& instance) {
    return instance + '\0' + QCoreApplication::arguments().value(0).toStdString() + '\0';
}

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
    Snapshot snapshot{area, {}};
    snapshot.pixels.resize(static_cast<size_t>(area.width) * area.height);
    const size_t bytes = snapshot.pixels.size() * sizeof(uint32_t);
    if (!image || image->depth != 24 ||
        static_cast<size_t>(xcb_get_image_data_length(image.get())) < bytes)
        return {};
    std::memcpy(snapshot.pixels.data(), xcb_get_image_data(image.get()), bytes);
    return snapshot;
}

HeldWindow::HeldWindow(ToolkitGuard& guard, WindowId window)
    : m_guard(guard), m_window(static_cast<xcb_window_t>(window)) {}

HeldWindow::~HeldWindow() {
    giveKeyboardBack();
    m_guard.forget(m_window);
    if (m_isKept) m_guard.onChanged();
}

void HeldWindow::keep() {
    m_isKept = true;
    m_guard.onChanged();
}

void HeldWindow::setName(const std::string& instance) {
    const std::string name = windowClass(instance);
    xcb_change_property(toolkit(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, static_cast<uint32_t>(name.size()), name.data());
}

void HeldWindow::setShadowMargin(int margin) {
    const auto width = static_cast<uint32_t>(margin);
    setNumbers("_GTK_FRAME_EXTENTS", {width, width, width, width});
    setNumbers("_COMPTON_SHADOW", {0}); // Some go by this one alone.
}

void HeldWindow::setNumbers(const char* property, const std::vector<uint32_t>& numbers) const {
    xcb_change_property(toolkit(), XCB_PROP_MODE_REPLACE, m_window,
                        m_guard.connection().atom(property), XCB_ATOM_CARDINAL, 32,
                        static_cast<uint32_t>(numbers.size()), numbers.data());
}

void HeldWindow::setLevel(int level) {
    m_guard.stacking().add(m_window, level);
    keep();
}

Snapshot HeldWindow::grabAround(int margin) {
    xcb_connection_t* const xcb = toolkit();
    const xcb_window_t root = m_guard.connection().root();
    const auto place = await(xcb, xcb_get_geometry_reply, xcb_get_geometry(xcb, m_window));
    const auto corner = // In a tray its geometry is relative to the tray's window.
        await(xcb, xcb_translate_coordinates_reply,
              xcb_translate_coordinates(xcb, m_window, root, 0, 0));
    const auto screen = await(xcb, xcb_get_geometry_reply, xcb_get_geometry(xcb, root));
    if (!place || !corner || !screen || !m_guard.connection().hasPlainPixels()) return {};
    const PixelRect area =
        intersection(grown({corner->dst_x, corner->dst_y, place->width, place->height}, margin),
                     sized(screen->width, screen->height));
    if (isEmpty(area)) return {};
    return takeSnapshot(xcb, root, area, translated(area, -corner->dst_x, -corner->dst_y));
}

// --- The keyboard

/// The window is mapped by then.
void HeldWindow::takeKeyboard() {
    const xcb_window_t former = m_guard.keyboardOwner();
    if (former == m_window) return;
    // Taken back from another window of ours that borrowed it in turn, the first lender stays.
    const auto lender = m_guard.find(former);
    if (!m_lender || !lender || !lender->m_lender) m_lender = former;
    xcb_set_input_focus(toolkit(), XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
    xcb_flush(toolkit());
}

/// To the window that had it, if that still stands on the screen; else to whatever the pointer is
/// on.
void HeldWindow::giveKeyboardBack() const {
    if (!m_lender || m_guard.keyboardOwner() != m_window) return;
    const Connection& connection = m_guard.connection();
    const auto attributes = connection.reply(
        xcb_get_window_attributes_reply, xcb_get_window_attributes(connection.xcb(), *m_lender));
    const bool stands = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    xcb_set_input_focus(connection.xcb(), XCB_INPUT_FOCUS_PARENT,
                        stands ? *m_lender : xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT},
                        XCB_CURRENT_TIME);
    m_guard.keyboardOwner(); // The server has done it before the window goes.
}

// --- Place and shapes

bool HeldWindow::place(const CGRect& frame) {
    m_frame = frame;
    restorePlace();
    keep();
    return true;
}

PixelRect HeldWindow::wantedPlace() const {
    const Display* const display = m_frame ? m_guard.displays().at(*m_frame) : nullptr;
    return display ? pixelsOf(*m_frame, *display) : PixelRect();
}

/// Before it is watched the window may exist on the toolkit's connection alone.
void HeldWindow::restorePlace() const {
    const PixelRect wanted = wantedPlace();
    if (isEmpty(wanted)) return;
    xcb_connection_t* const xcb = m_isWatched ? m_guard.connection().xcb() : toolkit();
    configure(xcb, m_window, wanted);
    xcb_flush(xcb);
}

void HeldWindow::setShape(Region region, const std::vector<PixelRect>& rectangles) {
    if (!m_guard.connection().hasShape()) return;
    const uint8_t kind = region == Region::Input ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING;
    m_shapes[kind] = rectangles;
    sendShape(kind);
    keep();
}

void HeldWindow::sendShape(uint8_t kind) const {
    std::vector<xcb_rectangle_t> shape;
    for (const PixelRect& rectangle : m_shapes.at(kind))
        shape.push_back(toX(rectangle));
    xcb_shape_rectangles(toolkit(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, m_window, 0,
                         0, static_cast<uint32_t>(shape.size()), shape.data());
    xcb_flush(toolkit());
}

void HeldWindow::watch() {
    m_isWatched = true;
    const Connection& connection = m_guard.connection();
    if (connection.hasShape()) xcb_shape_select_input(connection.xcb(), m_window, true);
    restorePlace();
    for (const uint8_t kind : {XCB_SHAPE_SK_BOUNDING, XCB_SHAPE_SK_CLIP, XCB_SHAPE_SK_INPUT})
        if (connection.hasShape()) restoreShape(kind); // It may have been changed before.
}

void HeldWindow::handle(const xcb_generic_event_t& event) {
    const Connection& connection = m_guard.connection();
    const int type = typeOf(event);
    if (connection.hasShape() && type == connection.events().shape + XCB_SHAPE_NOTIFY)
        return handleShape(as<xcb_shape_notify_event_t>(event));
    if (type == XCB_CONFIGURE_NOTIFY)
        return handleConfigure(as<xcb_configure_notify_event_t>(event));
    const bool hasGone =
        type == XCB_UNMAP_NOTIFY || type == XCB_DESTROY_NOTIFY || type == XCB_REPARENT_NOTIFY;
    if (!hasGone || !m_guard.stacking().holds(m_window) || !onGone) return;
    const auto tell = onGone; // This object may not outlive the call.
    tell();
}

void HeldWindow::handleConfigure(const xcb_configure_notify_event_t& event) const {
    if (!m_isWatched) return;
    const PixelRect now{event.x, event.y, event.width, event.height};
    const PixelRect wanted = m_frame ? wantedPlace() : now;
    if (isEmpty(wanted) || (now == wanted && event.border_width == 0)) return;
    configure(m_guard.connection().xcb(), m_window, wanted);
    m_guard.connection().flush();
}

void HeldWindow::handleShape(const xcb_shape_notify_event_t& event) const {
    if (event.shaped || m_shapes.contains(event.shape_kind)) restoreShape(event.shape_kind);
}

/// The toolkit's own changes are announced by the same events, so the shapes are compared.
void HeldWindow::restoreShape(uint8_t kind) const {
    Connection& connection = m_guard.connection();
    if (!m_shapes.contains(kind)) {
        xcb_shape_mask(connection.xcb(), XCB_SHAPE_SO_SET, kind, m_window, 0, 0, XCB_PIXMAP_NONE);
        return connection.flush();
    }
    const auto reply = connection.reply(xcb_shape_get_rectangles_reply,
                                        xcb_shape_get_rectangles(connection.xcb(), m_window, kind));
    if (!reply) return; // It has gone.
    std::vector<PixelRect> found;
    const auto* rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i)
        found.push_back(fromX(rectangles[i]));
    if (linesOf(found) != linesOf(m_shapes.at(kind))) sendShape(kind);
}

} // namespace WindowServer
