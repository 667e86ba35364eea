#include "WindowServer/X11/Desktop/KeyGrab.h"

#include "Foundation/NSBundle+Private.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <chrono>
#include <thread>

#include <xkbcommon/xkbcommon-x11.h>

#define explicit explicit_ // A member of this C header has that name.
#include <xcb/xkb.h>
#undef explicit

namespace WindowServer {

namespace {

constexpr std::chrono::milliseconds patience(2000), pause(10);

} // namespace

bool KeyGrab::take(const KeyChord& chord) {
    if (m_chord) return false;
    listenToKeyboard();
    m_code = codeOf(chord, m_connection, m_xkbEvent != 0);
    if (!inherit()) return false;
    m_chord = chord;
    QCoreApplication::instance()->installNativeEventFilter(this);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, qApp, [this] { leave(); });
    return true;
}

/// Asks for changes of the layout, and that a key kept down repeats its press alone.
void KeyGrab::listenToKeyboard() {
    xcb_connection_t* const xcb = m_connection.xcb();
    if (!xkb_x11_setup_xkb_extension(
            xcb, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &m_xkbEvent, nullptr))
        return;
    constexpr uint16_t events =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(xcb, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
    constexpr uint32_t once = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto set = xcb_xkb_per_client_flags(xcb, XCB_XKB_ID_USE_CORE_KBD, once, once, 0, 0, 0);
    xcb_discard_reply(xcb, set.sequence);
}

/// Waits for another instance to let go of the chord, as one that was asked to quit does soon.
/// One that is stuck keeps it.
bool KeyGrab::inherit() {
    const QDeadlineTimer deadline(patience);
    while (const auto rival = hold()) {
        if (*rival == XCB_WINDOW_NONE || deadline.hasExpired()) return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

/// Empty where the chord is ours now; else the window of the instance that has it, or no window
/// where another program has it or the key does not exist. The server is grabbed, so that both
/// answers are of one moment.
std::optional<xcb_window_t> KeyGrab::hold() {
    std::optional<xcb_window_t> rival;
    xcb_grab_server(m_connection.xcb());
    if (grab())
        announce();
    else
        rival = m_connection.ownerOf(selection());
    xcb_ungrab_server(m_connection.xcb());
    m_connection.flush();
    return rival;
}

bool KeyGrab::grab() const {
    if (m_code.key == 0) return false; // 0 would grab every key.
    xcb_connection_t* const xcb = m_connection.xcb();
    std::vector<xcb_void_cookie_t> requests;
    for (const uint16_t state : m_code.states())
        requests.push_back(xcb_grab_key_checked(xcb, 0, m_connection.root(), state, m_code.key,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool granted = true;
    for (const auto& request : requests)
        granted &= succeeded(xcb, request);
    if (!granted) letGo();
    return granted;
}

void KeyGrab::letGo() const {
    if (m_code.key == 0) return;
    for (const uint16_t state : m_code.states())
        xcb_ungrab_key(m_connection.xcb(), m_code.key, m_connection.root(), state);
}

void KeyGrab::announce() {
    xcb_connection_t* const xcb = m_connection.xcb();
    if (m_window == XCB_WINDOW_NONE) {
        m_window = m_connection.newId();
        xcb_create_window(xcb, 0, m_window, m_connection.root(), -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        setText(xcb, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                infoOf("CFBundleName") + " hot key");
    }
    xcb_set_selection_owner(xcb, m_window, selection(), XCB_CURRENT_TIME);
}

/// Frees the chord at once: the next instance is waiting for it, not for this process to end.
void KeyGrab::leave() {
    letGo();
    xcb_destroy_window(m_connection.xcb(), m_window);
    m_connection.flush();
}

/// The one that the instance with the key owns.
xcb_atom_t KeyGrab::selection() const {
    return m_connection.atom((infoOf("CFBundleIdentifier") + ".HotKey").c_str());
}

void KeyGrab::handle(const xcb_generic_event_t& event) {
    if (m_chord && !handleKey(event) && isChange(event)) followKeymap();
}

/// True where it is a press of the chord.
bool KeyGrab::handleKey(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    const auto& key = as<xcb_key_press_event_t>(event); // A release is told in the same form.
    if (type == XCB_KEY_RELEASE && key.detail == m_down) m_down = 0;
    if (type != XCB_KEY_PRESS) return false;
    if (key.detail == m_down) return true;
    if (key.detail != m_code.key || !m_code.matches(key.state)) return false;
    m_down = key.detail;
    if (onPressed) onPressed();
    return true;
}

bool KeyGrab::isChange(const xcb_generic_event_t& event) const {
    const int type = typeOf(event);
    if (type == XCB_MAPPING_NOTIFY) return true;
    if (m_xkbEvent == 0 || type != m_xkbEvent) return false;
    const uint8_t kind = event.pad0; // XKB events share one code; their second byte is the kind.
    return kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY;
}

void KeyGrab::followKeymap() {
    const ChordCode code = codeOf(*m_chord, m_connection, m_xkbEvent != 0);
    if (code == m_code) return;
    letGo();
    m_code = code;
    hold();
}

/// A menu of our own takes the whole keyboard for the toolkit, which then gets the chord in our
/// stead.
bool KeyGrab::nativeEventFilter(const QByteArray& type, void* event, qintptr*) {
    return type == "xcb_generic_event_t" &&
           handleKey(*static_cast<const xcb_generic_event_t*>(event));
}

} // namespace WindowServer
