#include "WindowServer/Wayland/Connection.h"

#include "Foundation/NSLog.h"
#include "WindowServer/Wayland/Comeback.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <thread>

namespace WindowServer::Wayland {

namespace {

constexpr uint32_t seatVersion = 5;   ///< In which pointers tell the steps of wheels.
constexpr uint32_t outputVersion = 2; ///< In which outputs tell that they have told all.
constexpr std::chrono::milliseconds retryPause(50);

/// Named by WAYLAND_DISPLAY, or there where the kind of the session says so.
bool isWaylandSession() {
    const char* type = std::getenv("XDG_SESSION_TYPE");
    return std::getenv("WAYLAND_DISPLAY") || (type && std::string_view(type) == "wayland");
}

template <class T>
bool bind(wl_registry* registry, uint32_t name, std::string_view offered, uint32_t version,
          const wl_interface& interface, uint32_t most, T*& object) {
    if (offered != interface.name || object) return false;
    object = static_cast<T*>(wl_registry_bind(registry, name, &interface, std::min(version, most)));
    return true;
}

} // namespace

std::unique_ptr<Connection> Connection::open() {
    if (!isWaylandSession()) return nullptr;
    using Clock = std::chrono::steady_clock;
    Comeback& comeback = Comeback::shared();
    const auto end = Clock::now() + comeback.patience();
    auto connection = join();
    while (!connection && Clock::now() < end) {
        std::this_thread::sleep_for(retryPause);
        connection = join();
    }
    if (!connection && comeback.patience().count() > 0) {
        NSLog("Wayland: the compositor has not come back.");
        // The X server that it had may still take calls, and answer none.
        std::exit(EXIT_FAILURE);
    }
    if (connection) comeback.prepare();
    return connection;
}

std::unique_ptr<Connection> Connection::join() {
    wl_display* const display = wl_display_connect(nullptr);
    if (!display) return nullptr;
    std::unique_ptr<Connection> connection(new Connection(display));
    const Globals& has = connection->m_globals;
    const bool enough = has.compositor && has.subcompositor && has.shm && has.viewporter &&
                        has.layers && has.outputs;
    return enough ? std::move(connection) : nullptr;
}

Connection::Connection(wl_display* display) : m_display(display) {
    m_registry = wl_display_get_registry(display);
    static const wl_registry_listener listener = {.global = Tell<&Connection::announce>(),
                                                  .global_remove = Tell<&Connection::withdraw>()};
    wl_registry_add_listener(m_registry, &listener, this);
    wl_display_roundtrip(display);
}

/// The library keeps what it knows of an object until it is told otherwise.
Connection::~Connection() {
    const auto forget = [](auto*... objects) {
        ((objects ? wl_proxy_destroy(reinterpret_cast<wl_proxy*>(objects)) : void()), ...);
    };
    const Globals& all = m_globals;
    forget(all.compositor, all.subcompositor, all.shm, all.viewporter, all.fractions, all.layers,
           all.screencopy, all.outputs, all.blur, all.effects, m_registry);
    wl_display_disconnect(m_display);
}

void Connection::announce(uint32_t name, const char* interface, uint32_t version) {
    Globals& all = m_globals;
    const auto take = [&](const wl_interface& wanted, uint32_t most, auto*& object) {
        return bind(m_registry, name, interface, version, wanted, most, object);
    };
    if (interface == std::string_view(wl_output_interface.name)) {
        m_outputs.insert(name);
        if (onGlobalsChanged) onGlobalsChanged();
    } else if (take(org_kde_kwin_blur_manager_interface, 1, all.blur)) {
        m_blurName = name;
        if (onGlobalsChanged) onGlobalsChanged();
    } else if (take(ext_background_effect_manager_v1_interface, 1, all.effects)) {
        static const ext_background_effect_manager_v1_listener listener = {
            .capabilities = Tell<&Connection::setOfferedEffects>()};
        ext_background_effect_manager_v1_add_listener(all.effects, &listener, this);
    } else if (version >= 4) {
        take(wl_compositor_interface, 4, all.compositor);
    }
    const bool isSeat = interface == std::string_view(wl_seat_interface.name);
    if (isSeat && version >= seatVersion && m_seatName == 0) m_seatName = name;
    take(wl_subcompositor_interface, 1, all.subcompositor);
    take(wl_shm_interface, 1, all.shm);
    take(wp_viewporter_interface, 1, all.viewporter);
    take(wp_fractional_scale_manager_v1_interface, 1, all.fractions);
    take(zwlr_layer_shell_v1_interface, 1, all.layers);
    take(zwlr_screencopy_manager_v1_interface, 1, all.screencopy);
    take(zxdg_output_manager_v1_interface, 2, all.outputs);
}

void Connection::withdraw(uint32_t name) {
    if (name == m_blurName) {
        org_kde_kwin_blur_manager_destroy(m_globals.blur);
        m_globals.blur = nullptr;
        m_blurName = 0;
    } else if (m_outputs.erase(name) == 0) {
        return;
    }
    if (onGlobalsChanged) onGlobalsChanged();
}

void Connection::setOfferedEffects(uint32_t capabilities) {
    m_globals.offeredEffects = capabilities;
    if (onGlobalsChanged) onGlobalsChanged();
}

Owned<wl_output> Connection::bindOutput(uint32_t name) const {
    return Owned<wl_output>(static_cast<wl_output*>(
        wl_registry_bind(m_registry, name, &wl_output_interface, outputVersion)));
}

Owned<wl_seat> Connection::bindSeat() const {
    if (m_seatName == 0) return nullptr;
    return Owned<wl_seat>(static_cast<wl_seat*>(
        wl_registry_bind(m_registry, m_seatName, &wl_seat_interface, seatVersion)));
}

void Connection::attach() {
    connect(qApp, &QCoreApplication::aboutToQuit, this, [] { Comeback::shared().forgo(); });
    const int socket = wl_display_get_fd(m_display);
    auto* const readable = new QSocketNotifier(socket, QSocketNotifier::Read, this);
    connect(readable, &QSocketNotifier::activated, this, &Connection::read);
    m_writable = new QSocketNotifier(socket, QSocketNotifier::Write, this);
    m_writable->setEnabled(false);
    connect(m_writable, &QSocketNotifier::activated, this, &Connection::flush);
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] {
                dispatch(); // What came while a reply was waited for no longer wakes the notifier.
                onTurnEnd();
                flush();
            });
}

void Connection::read() {
    while (wl_display_prepare_read(m_display) != 0)
        dispatch();
    wl_display_read_events(m_display);
    dispatch();
}

void Connection::dispatch() {
    if (wl_display_dispatch_pending(m_display) < 0) Comeback::shared().begin();
}

void Connection::flush() {
    const bool isFull = wl_display_flush(m_display) < 0 && errno == EAGAIN;
    if (m_writable) m_writable->setEnabled(isFull);
}

void Connection::settle() { wl_display_roundtrip(m_display); }

Owned<wl_surface> Connection::makeSurface() const {
    return Owned<wl_surface>(wl_compositor_create_surface(m_globals.compositor));
}

void Connection::setInput(wl_surface* surface, const QRegion& region) const {
    wl_surface_set_input_region(surface, regionOf(*this, region).get());
}

Owned<wl_region> regionOf(const Connection& connection, const QRegion& region) {
    Owned<wl_region> result(wl_compositor_create_region(connection.globals().compositor));
    for (const QRect& part : region)
        wl_region_add(result.get(), part.x(), part.y(), part.width(), part.height());
    return result;
}

} // namespace WindowServer::Wayland
