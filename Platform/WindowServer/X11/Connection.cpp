#include "WindowServer/X11/Connection.h"

#include "Foundation/NSLog.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>

#include <bit>
#include <initializer_list>
#include <string>
#include <utility>

#include <unistd.h>

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

namespace WindowServer {

namespace {

const xcb_screen_t* screenAt(xcb_connection_t* connection, int number) {
    auto it = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; it.rem && number > 0; --number)
        xcb_screen_next(&it);
    return it.data;
}

/// What is asked for at every start. The server is asked once for all of them.
constexpr std::string_view usualAtoms[] = {"EDID",
                                           "UTF8_STRING",
                                           "_COMPTON_SHADOW",
                                           "_GTK_FRAME_EXTENTS",
                                           "_GTK_WORKAREAS_D0",
                                           "_NET_CLIENT_LIST",
                                           "_NET_SYSTEM_TRAY_COLORS",
                                           "_NET_SYSTEM_TRAY_OPCODE",
                                           "_NET_SYSTEM_TRAY_S0",
                                           "_NET_SYSTEM_TRAY_VISUAL",
                                           "_NET_WM_BYPASS_COMPOSITOR",
                                           "_NET_WM_CM_S0",
                                           "_NET_WM_NAME",
                                           "_NET_WM_STATE",
                                           "_NET_WM_STATE_FULLSCREEN",
                                           "_NET_WM_STRUT",
                                           "_NET_WM_STRUT_PARTIAL",
                                           "_NET_WM_WINDOW_OPACITY",
                                           "_NET_WM_WINDOW_TYPE",
                                           "_NET_WM_WINDOW_TYPE_DOCK",
                                           "_NET_WM_WINDOW_TYPE_NOTIFICATION",
                                           "_XEMBED_INFO",
                                           "_XROOTPMAP_ID",
                                           "_XSETTINGS_S0",
                                           "_XSETTINGS_SETTINGS"};

/// Adds the needs that are not met and their consequence to the line of the log.
void addMissing(std::string& text, const char* consequence,
                std::initializer_list<std::pair<const char*, bool>> needs) {
    std::string names;
    for (const auto& [name, met] : needs)
        if (!met) names += (names.empty() ? "" : ", ") + std::string(name);
    if (names.empty()) return;
    text += (text.empty() ? "" : "; ") + names + " missing: " + consequence;
}

} // namespace

std::unique_ptr<Connection> Connection::open() {
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<Connection>(new Connection(connection, screenNumber));
}

Connection::Connection(xcb_connection_t* connection, int screenNumber)
    : m_xcb(connection), m_screenNumber(screenNumber),
      m_screen(screenAt(connection, screenNumber)) {
    for (auto* extension : {&xcb_composite_id, &xcb_damage_id, &xcb_render_id, &xcb_xfixes_id,
                            &xcb_randr_id, &xcb_shape_id})
        xcb_prefetch_extension_data(m_xcb, extension);
    const auto find = [this](xcb_extension_t& id) {
        static constexpr xcb_query_extension_reply_t missing{};
        const auto* data = xcb_get_extension_data(m_xcb, &id);
        return data && data->present ? *data : missing;
    };
    const auto composite = find(xcb_composite_id);
    const auto damage = find(xcb_damage_id);
    const auto render = find(xcb_render_id);
    const auto xfixes = find(xcb_xfixes_id);
    const auto randr = find(xcb_randr_id);
    const auto shape = find(xcb_shape_id);
    m_events = {damage.first_event, randr.first_event, shape.first_event};
    m_damageError = damage.first_error;
    m_hasComposite = composite.present;

    // An extension answers only once its version is agreed on.
    if (composite.present) xcb_composite_query_version(m_xcb, 0, 4);
    if (damage.present) xcb_damage_query_version(m_xcb, 1, 1);
    if (xfixes.present) xcb_xfixes_query_version(m_xcb, 5, 0);
    if (randr.present) xcb_randr_query_version(m_xcb, 1, 5);
    if (render.present) {
        m_formats = xcb_render_util_query_formats(m_xcb); // It agrees on the version as well.
        const auto* rgb = xcb_render_util_find_standard_format(m_formats, XCB_PICT_STANDARD_RGB_24);
        if (rgb) m_rgbFormat = rgb->id;
    }
    const bool knowsScreen = !render.present || formatOf(m_screen->root_visual) != 0;
    m_canBlurLive = composite.present && damage.present && xfixes.present && m_rgbFormat &&
                    knowsScreen && hasPlainPixels();

    std::string missing;
    addMissing(missing,
               canBlurStill() ? "the cover shows a still picture" : "the cover is plain dark",
               {{"Composite", composite.present},
                {"Damage", damage.present},
                {"Render", m_rgbFormat != 0},
                {"XFixes", xfixes.present},
                {"Render's format of the screen", knowsScreen},
                {"pixels of 32 bits", hasPlainPixels()}});
    addMissing(missing, "the whole screen counts as one monitor", {{"RandR", randr.present}});
    addMissing(missing, "no click goes through the cover", {{"Shape", shape.present}});
    if (!missing.empty()) NSLog("X11: " + missing + ".");
    intern(usualAtoms);
}

Connection::~Connection() {
    xcb_render_util_disconnect(m_xcb);
    xcb_disconnect(m_xcb);
}

bool Connection::hasPlainPixels() const {
    const auto* setup = xcb_get_setup(m_xcb);
    const bool serverIsLittle = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    if (serverIsLittle != (std::endian::native == std::endian::little)) return false;
    for (auto it = xcb_setup_pixmap_formats_iterator(setup); it.rem; xcb_format_next(&it))
        if (it.data->depth == 24) return it.data->bits_per_pixel == 32;
    return false;
}

/// New ones say so by an extension that is there for nothing else; older ones are known by what
/// they call their monitors.
bool Connection::isXwayland() const {
    constexpr std::string_view name = "XWAYLAND";
    const auto extension =
        reply(xcb_query_extension_reply, xcb_query_extension(m_xcb, name.size(), name.data()));
    if (extension && extension->present) return true;
    if (!m_events.randr) return false;
    const auto monitors =
        reply(xcb_randr_get_monitors_reply, xcb_randr_get_monitors(m_xcb, root(), true));
    if (!monitors) return false;
    auto it = xcb_randr_get_monitors_monitors_iterator(monitors.get());
    for (; it.rem; xcb_randr_monitor_info_next(&it))
        if (nameOf(it.data->name).starts_with(name)) return true;
    return false;
}

bool Connection::canBlurStill() const { return hasPlainPixels() && m_screen->root_depth == 24; }

xcb_render_pictformat_t Connection::formatOf(xcb_visualid_t visual) const {
    const auto* found = xcb_render_util_find_visual_format(m_formats, visual);
    return found ? found->format : 0;
}

bool Connection::hasAlpha(xcb_render_pictformat_t format) const {
    xcb_render_pictforminfo_t wanted = {};
    wanted.id = format;
    const auto* found = xcb_render_util_find_format(m_formats, XCB_PICT_FORMAT_ID, &wanted, 0);
    return found && found->direct.alpha_mask != 0;
}

xcb_atom_t Connection::atom(std::string_view name) {
    if (!m_atoms.contains(name)) intern({&name, 1});
    return m_atoms.find(name)->second;
}

void Connection::intern(std::span<const std::string_view> names) {
    std::vector<xcb_intern_atom_cookie_t> inFlight;
    for (const std::string_view name : names)
        inFlight.push_back(
            xcb_intern_atom(m_xcb, false, static_cast<uint16_t>(name.size()), name.data()));
    for (size_t i = 0; i < names.size(); ++i) {
        const auto answer = reply(xcb_intern_atom_reply, inFlight[i]);
        m_atoms[std::string(names[i])] = answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
}

std::string Connection::nameOf(xcb_atom_t atom) const {
    const auto answer = reply(xcb_get_atom_name_reply, xcb_get_atom_name(m_xcb, atom));
    if (!answer) return {};
    return {xcb_get_atom_name_name(answer.get()),
            static_cast<size_t>(xcb_get_atom_name_name_length(answer.get()))};
}

xcb_window_t Connection::ownerOf(xcb_atom_t selection) const {
    const auto answer =
        reply(xcb_get_selection_owner_reply, xcb_get_selection_owner(m_xcb, selection));
    return answer ? answer->owner : xcb_window_t{XCB_WINDOW_NONE};
}

void Connection::stack(xcb_window_t window, uint32_t mode, xcb_window_t sibling) const {
    const uint32_t values[] = {sibling, mode};
    const bool hasSibling = sibling != XCB_NONE;
    xcb_configure_window(
        m_xcb, window, XCB_CONFIG_WINDOW_STACK_MODE | (hasSibling ? XCB_CONFIG_WINDOW_SIBLING : 0),
        hasSibling ? values : values + 1);
}

std::vector<uint32_t> Connection::numbers(xcb_window_t window, xcb_atom_t property,
                                          uint32_t most) const {
    return numbersOf(reply(xcb_get_property_reply, xcb_get_property(m_xcb, false, window, property,
                                                                    XCB_ATOM_ANY, 0, most)));
}

std::vector<xcb_window_t> Connection::children(xcb_window_t window) const {
    const auto tree = reply(xcb_query_tree_reply, xcb_query_tree(m_xcb, window));
    if (!tree) return {};
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    return {first, first + tree->children_len};
}

void Connection::attach() {
    auto* notifier =
        new QSocketNotifier(xcb_get_file_descriptor(m_xcb), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { dispatch(xcb_poll_for_event); });
    // A wait for a reply may have read events from the socket, which then stays silent.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { dispatch(xcb_poll_for_queued_event); });
}

void Connection::dispatch(xcb_generic_event_t* (*poll)(xcb_connection_t*)) {
    while (const auto event = nextEvent(poll)) {
        if (event->response_type == 0) {
            const auto& error = reinterpret_cast<const xcb_generic_error_t&>(*event);
            if (isRace(error) || isExcused(error)) continue;
#ifndef NDEBUG
            if (error.error_code != XCB_ALLOC)
                qFatal("unexpected X error %d on request %d.%d for 0x%x", error.error_code,
                       error.major_code, error.minor_code, error.resource_id);
#endif
            if (onRefusal) onRefusal();
            continue;
        }
        if (onEvent) onEvent(*event);
    }
    if (xcb_connection_has_error(m_xcb)) ::_exit(1);
}

/// Null once all is written and nothing is left to read. Writing may read as well.
Owned<xcb_generic_event_t>
Connection::nextEvent(xcb_generic_event_t* (*poll)(xcb_connection_t*)) const {
    if (auto* event = poll(m_xcb)) return Owned<xcb_generic_event_t>(event);
    flush();
    return Owned<xcb_generic_event_t>(xcb_poll_for_queued_event(m_xcb));
}

/// Errors about another program's resource mean that its window died between an event and our
/// request; a damage object of ours dies with the window that it watches. An error of memory names
/// no resource, so it is never such a race.
bool Connection::isRace(const xcb_generic_error_t& error) const {
    if (error.error_code == XCB_ALLOC) return false;
    const auto* setup = xcb_get_setup(m_xcb);
    const bool ours = (error.resource_id & ~setup->resource_id_mask) == setup->resource_id_base;
    return !ours || (m_damageError && error.error_code == m_damageError);
}

bool Connection::isExcused(const xcb_generic_error_t& error) const {
    return m_excusedUntil && static_cast<int32_t>(error.full_sequence - *m_excusedUntil) <= 0;
}

} // namespace WindowServer
