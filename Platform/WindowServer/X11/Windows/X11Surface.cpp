#include "WindowServer/X11/Windows/X11Surface.h"

#include "WindowServer/X11/Blur/ScreenGrab.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/Overlay.h"
#include "WindowServer/X11/Windows/Stacking.h"

#include <cmath>
#include <utility>

#include <xcb/composite.h>
#include <xcb/shape.h>

namespace WindowServer {

namespace {

constexpr uint32_t opaque = 0xffffffff;

/// Beyond the screen, which compositors do not draw.
constexpr PixelRect parking{-1, -1, 1, 1};

/// Whether the window is drawn into a pixmap instead of the screen. Naming the pixmap fails for one
/// that is not.
bool isRedirected(Connection& connection, xcb_window_t window) {
    if (!connection.hasComposite()) return false;
    const xcb_pixmap_t pixmap = connection.newId();
    const bool named =
        succeeded(connection.xcb(),
                  xcb_composite_name_window_pixmap_checked(connection.xcb(), window, pixmap));
    if (named) xcb_free_pixmap(connection.xcb(), pixmap);
    return named;
}

xcb_render_color_t opaqueOf(const CGColor& color) {
    const auto part = [&color](double value) {
        return static_cast<uint16_t>(std::lround(value * color.alpha * 0xffff));
    };
    return {part(color.red), part(color.green), part(color.blue), 0xffff};
}

} // namespace

X11Surface::X11Surface(Connection& connection, const Displays& displays,
                       const SelectionWatch& compositor, Stacking& stacking, int number,
                       std::function<void()> onChanged, std::function<void(const Surface&)> onGone)
    : Surface(number, std::move(onChanged), std::move(onGone)), m_connection(connection),
      m_displays(displays), m_compositor(compositor), m_stacking(stacking) {
    create();
}

void X11Surface::create() {
    m_sentinel.emplace(m_connection);
    m_window = m_connection.newId();
    xcb_connection_t* const xcb = m_connection.xcb();
    const uint32_t values[] = {m_connection.screen().black_pixel, true};
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    markForCompositors();
    m_connection.setAttribute(m_window, XCB_CW_EVENT_MASK,
                              XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_PROPERTY_CHANGE);
    if (m_connection.hasShape()) xcb_shape_select_input(xcb, m_window, true);
    dropInput(m_connection, m_window);
    m_canvas.emplace(m_connection, m_window);
}

/// A compositor's settings would make the cover translucent, dim it, round its corners or throw its
/// shadow on the next monitor; and an opaque window as large as a monitor is no reason to stop
/// compositing.
void X11Surface::markForCompositors() {
    const auto set = [this](const char* property, xcb_atom_t type, uint32_t value) {
        setNumbers(m_connection.xcb(), m_window, m_connection.atom(property), type, {value});
    };
    set("_NET_WM_WINDOW_OPACITY", XCB_ATOM_CARDINAL, opaque);
    set("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
        m_connection.atom("_NET_WM_WINDOW_TYPE_NOTIFICATION"));
    set("_NET_WM_STATE", XCB_ATOM_ATOM, m_connection.atom("_NET_WM_STATE_FULLSCREEN"));
    set("_COMPTON_SHADOW", XCB_ATOM_CARDINAL, 0);
    set("_NET_WM_BYPASS_COMPOSITOR", XCB_ATOM_CARDINAL, 2);
}

X11Surface::~X11Surface() {
    unstack();
    m_pane.reset();
    m_canvas.reset();
    m_backdrop.reset();
    xcb_destroy_window(m_connection.xcb(), m_window);
    m_connection.flush();
}

void X11Surface::changed() {
    m_stale = true;
    Surface::changed();
}

void X11Surface::makeAnew() {
    unstack();
    m_canvas.reset();
    xcb_destroy_window(m_connection.xcb(), m_window); // It may live on in another one.
    create();
    m_connection.excuseRefusals();
    writeNames();
    m_parked = false;
}

void X11Surface::showAgain() {
    configure(m_connection.xcb(), m_window, m_pixels);
    m_sentinel->place(m_pixels);
    m_connection.setAttribute(m_window, XCB_CW_BACK_PIXEL, groundPixel());
    map();
    if (m_backdrop && !m_pane) paintAll();
    stack();
}

void X11Surface::stack() {
    m_stacking.add(sentinel(), level());
    m_stacking.add(m_window, level());
}

void X11Surface::unstack() {
    m_stacking.remove(sentinel());
    m_stacking.remove(m_window);
}

void X11Surface::writeNames() {
    xcb_connection_t* const xcb = m_connection.xcb();
    const auto& [title, instance] = m_names;
    setText(xcb, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
    setText(xcb, m_window, m_connection.atom("_NET_WM_NAME"), m_connection.atom("UTF8_STRING"),
            title);
    setClass(xcb, m_window, instance);
}

void X11Surface::place() {
    const Display* const display = m_displays.at(frame());
    if (!display) return;
    m_scale = display->scale;
    const PixelRect former = std::exchange(m_pixels, pixelsOf(frame(), *display));
    m_stale |= m_pixels != former;
    if (frame() != display->frame) return;
    const std::pair names(title(), identifier() + ':' + display->name);
    if (std::exchange(m_names, names) != names) writeNames();
}

void X11Surface::prepare(bool resting) {
    m_stale = false;
    m_live = wantsLiveBlur() && m_connection.canBlurLive() && !resting;
    if (m_live)
        m_backdrop = std::make_unique<Backdrop>(m_connection, m_pixels.width, m_pixels.height,
                                                radius() / 2.0 * m_scale);
    else if (look().material && look().overlay.alpha < 1)
        prepareStill(materialDeviation * m_scale);
    else
        m_backdrop.reset();
    if (resting && m_backdrop) m_still = std::move(m_backdrop);
    stack();
}

/// A still picture can be taken only while nothing of ours lies over the screen; afterwards the one
/// taken is kept, stretched where the size changes.
void X11Surface::prepareStill(double deviation) {
    const auto former = std::move(m_still ? m_still : m_backdrop);
    auto next =
        std::make_unique<Backdrop>(m_connection, m_pixels.width, m_pixels.height, deviation);
    if (!m_mapped) {
        if (!grabScreen(m_connection, m_pixels, next->plan().factor(), next->source())) return;
    } else if (former) {
        next->source() = resized(former->source(), next->source().width, next->source().height);
    } else {
        return;
    }
    next->develop(look().overlay);
    m_backdrop = std::move(next);
}

void X11Surface::sourceAnswered(bool filled) {
    m_live = filled;
    if (filled)
        m_backdrop->develop(look().overlay);
    else
        m_backdrop.reset();
}

void X11Surface::refresh() {
    const PixelRect area = m_backdrop->develop(look().overlay);
    if (!isEmpty(area)) paint(area);
}

void X11Surface::show(const Overlay* overlay) {
    std::unique_ptr<Pane> former; // Seen until the window itself is painted.
    if (overlay)
        showInPane(*overlay);
    else
        former = std::move(m_pane);
    showInWindow();
}

void X11Surface::showInPane(const Overlay& overlay) {
    if (!m_pane || m_pane->place() != m_pixels)
        m_pane = overlay.makePane(m_pixels, [this](const Canvas& canvas, const PixelRect& area) {
            paintPicture(canvas, area);
        });
    paintAll();
    m_pane->setBackground(groundPixel());
}

/// With no background the server leaves the old pixels until the picture is painted, so no plain
/// frame is ever seen; later exposures start from the picture's mean. Under a pane the mean is all
/// there is: it comes to light where the overlay is lost, and where a compositor is in the middle
/// of a frame as the cover goes. One that was parked is mapped anew there, for compositors on
/// software GL stand still for seconds as a window that they have never drawn changes its size.
void X11Surface::showInWindow() {
    if (m_parked && m_pane) xcb_unmap_window(m_connection.xcb(), m_window);
    configure(m_connection.xcb(), m_window, m_pixels);
    m_sentinel->place(m_pixels);
    if (m_pane) {
        m_connection.setAttribute(m_window, XCB_CW_BACK_PIXEL, groundPixel());
        return map();
    }
    if (!m_backdrop) return showPlain();
    if (!m_mapped) m_connection.setAttribute(m_window, XCB_CW_BACK_PIXMAP, XCB_BACK_PIXMAP_NONE);
    map();
    paintAll();
    m_connection.setAttribute(m_window, XCB_CW_BACK_PIXEL, groundPixel());
}

uint32_t X11Surface::groundPixel() const {
    if (m_backdrop) return m_backdrop->meanPixel();
    if (m_connection.screen().root_depth != 24) return m_connection.screen().black_pixel;
    const xcb_render_color_t color = opaqueOf(look().overlay);
    return color.red >> 8 << 16 | color.green >> 8 << 8 | color.blue >> 8;
}

void X11Surface::showPlain() {
    m_backdrop.reset();
    m_live = false;
    m_connection.setAttribute(m_window, XCB_CW_BACK_PIXEL, groundPixel());
    map();
    xcb_clear_area(m_connection.xcb(), false, m_window, 0, 0, 0, 0);
    if (m_pane) paintAll();
}

void X11Surface::hide() {
    m_stale = false;
    m_live = false;
    m_backdrop.reset();
    m_still.reset();
    const bool wasMapped = std::exchange(m_mapped, false);
    const bool parks = m_compositor.isOwned() && isOrdered();
    if (!wasMapped && m_parked == parks) return;
    m_parked = parks;
    unstack();
    m_sentinel->hide();
    m_pane.reset();
    if (!parks) {
        xcb_unmap_window(m_connection.xcb(), m_window);
        return;
    }
    configure(m_connection.xcb(), m_window, parking);
    m_connection.stack(m_window, XCB_STACK_MODE_BELOW);
    xcb_map_window(m_connection.xcb(), m_window);
}

void X11Surface::map() {
    m_mapped = true;
    m_parked = false;
    const bool composited = m_compositor.isOwned();
    if (composited) m_sentinel->hide();
    m_mappedAt = xcb_map_window(m_connection.xcb(), m_window).sequence;
    if (!composited) m_sentinel->show();
}

void X11Surface::paintAll() {
    m_paintedAt = xcb_no_operation(m_connection.xcb()).sequence;
    paint(sized(m_pixels.width, m_pixels.height));
}

void X11Surface::paint(const PixelRect& area) {
    if (m_pane)
        m_pane->paint(translated(area, m_pixels.x, m_pixels.y));
    else
        paintPicture(*m_canvas, area);
}

void X11Surface::paintAbove(const std::vector<PixelRect>& areas) {
    if (!m_pane) return;
    for (const PixelRect& area : areas)
        m_pane->paint(area);
}

void X11Surface::paintPicture(const Canvas& canvas, const PixelRect& area) const {
    if (m_backdrop) return m_backdrop->paint(canvas, area);
    const xcb_rectangle_t rectangle = toX(translated(area, -canvas.originX, -canvas.originY));
    xcb_render_fill_rectangles(m_connection.xcb(), XCB_RENDER_PICT_OP_SRC, canvas.picture,
                               opaqueOf(look().overlay), 1, &rectangle);
}

void X11Surface::expose(const xcb_expose_event_t& event) {
    const bool isPainted = m_backdrop || m_pane;
    if (isPainted && !isBefore(event, m_paintedAt))
        paint({event.x, event.y, event.width, event.height});
}

bool X11Surface::shows(xcb_window_t window) const {
    return window == (m_pane ? m_pane->window() : m_window);
}

bool X11Surface::mend(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    if (type == XCB_VISIBILITY_NOTIFY) {
        const auto& notify = as<xcb_visibility_notify_event_t>(event);
        const bool isBared = notify.window == sentinel() && m_mapped && !m_compositor.isOwned() &&
                             notify.state != XCB_VISIBILITY_FULLY_OBSCURED;
        if (isBared) m_sentinel->place(m_pixels); // Someone may have moved it.
        return isBared && isRedirected(m_connection, m_window);
    }
    if (type == XCB_PROPERTY_NOTIFY) restoreOpacity(as<xcb_property_notify_event_t>(event));
    const xcb_window_t root = m_connection.root();
    const PixelRect place = m_mapped ? m_pixels : PixelRect();
    const bool isTaken =
        WindowServer::mend(m_connection, {m_window, root, place, noInput}, event) ||
        WindowServer::mend(m_connection, {sentinel(), root, {}, {}}, event);
    // Mapped again at once, it could stay off the screen for a compositor, which missed the moment.
    return isTaken && (type != XCB_UNMAP_NOTIFY || (m_mapped && !isBefore(event, m_mappedAt)));
}

void X11Surface::restoreOpacity(const xcb_property_notify_event_t& event) {
    const xcb_atom_t opacity = m_connection.atom("_NET_WM_WINDOW_OPACITY");
    if (event.window != m_window || event.atom != opacity) return;
    if (m_connection.numbers(m_window, opacity, 1) == std::vector{opaque}) return;
    markForCompositors();
    m_connection.flush();
}

} // namespace WindowServer
