// The program's own connection to the compositor, apart from Qt's, which offers no layer surfaces.
#pragma once

#include "WindowServer/Wayland/Owned.h"
#include "WindowServer/Wayland/Tell.h"

#include <QObject>
#include <QPointF>
#include <QRegion>

#include <functional>
#include <memory>
#include <set>

class QSocketNotifier;

namespace WindowServer::Wayland {

/// What the compositor offers once for all. Null where it lacks it.
struct Globals {
    wl_compositor* compositor = nullptr;
    wl_subcompositor* subcompositor = nullptr;
    wl_shm* shm = nullptr;
    wp_viewporter* viewporter = nullptr;
    wp_fractional_scale_manager_v1* fractions = nullptr;
    zwlr_layer_shell_v1* layers = nullptr;
    zwlr_screencopy_manager_v1* screencopy = nullptr;
    zxdg_output_manager_v1* outputs = nullptr;
    org_kde_kwin_blur_manager* blur = nullptr;
    ext_background_effect_manager_v1* effects = nullptr;
    uint32_t offeredEffects = 0; ///< Those of `effects`.
};

class Connection : public QObject {
public:
    /// Null where the session is none of Wayland's, nobody answers there, or the compositor lets no
    /// program stand above the others. Waits for one that the program has lost.
    static std::unique_ptr<Connection> open();
    ~Connection() override;

    const Globals& globals() const { return m_globals; }

    /// The outputs that there are, by the names of their globals.
    const std::set<uint32_t>& outputs() const { return m_outputs; }
    Owned<wl_output> bindOutput(uint32_t name) const;
    /// Null where there is none. It tells what it has once, to whoever listens by then.
    Owned<wl_seat> bindSeat() const;

    /// Delivers events from the running event loop. As the compositor goes, the program starts
    /// anew.
    void attach();
    /// Called when all events are delivered and before the loop waits for more.
    std::function<void()> onTurnEnd;
    /// Called as an output, or the blur, comes or goes.
    std::function<void()> onGlobalsChanged;

    void flush();
    /// Returns when the compositor has carried out all that it was asked for.
    void settle();

    Owned<wl_surface> makeSurface() const;
    /// Limits what of a surface takes input, in its own points.
    void setInput(wl_surface* surface, const QRegion& region) const;

private:
    explicit Connection(wl_display* display);
    static std::unique_ptr<Connection> join();

    void announce(uint32_t name, const char* interface, uint32_t version);
    void withdraw(uint32_t name);
    void setOfferedEffects(uint32_t capabilities);
    void read();
    void dispatch();

    wl_display* const m_display;
    wl_registry* m_registry = nullptr;
    Globals m_globals;
    uint32_t m_blurName = 0;
    std::set<uint32_t> m_outputs;
    uint32_t m_seatName = 0;
    QSocketNotifier* m_writable = nullptr;
};

inline QPointF pointFrom(wl_fixed_t x, wl_fixed_t y) {
    return {wl_fixed_to_double(x), wl_fixed_to_double(y)};
}

/// The same in the compositor's words.
Owned<wl_region> regionOf(const Connection& connection, const QRegion& region);

} // namespace WindowServer::Wayland
