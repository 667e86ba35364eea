#pragma once

#include "WindowServer/PixelRect.h"
#include "WindowServer/Surfaces.h"

#include <QDBusMessage>
#include <QObject>
#include <QVariant>

#include <functional>

namespace WindowServer {

/// What goes to the extension of GNOME's Shell and comes from it. It answers on the Shell's own
/// connection to the session bus, so nobody else can take its place.
class ShellLink : public QObject {
    Q_OBJECT

public:
    /// Asks to be let in, now and whenever the extension comes or has been left by another. Waits
    /// for an answer, but not for long.
    void attach();
    bool isAttached() const { return m_isAttached; }

    /// Goes nowhere while not attached.
    void tell(const QString& method, const QVariantList& values = {}) const;
    /// The same, once it is done. False where it was refused.
    bool ask(const QString& method, const QVariantList& values = {}) const;

    Remedy remedy() const;
    /// What the user has said to the extension's being enabled. False where the Shell will only see
    /// it from the next login on.
    bool allow(bool allowed);

    std::function<void()> onAttached;
    std::function<void()> onDetached;
    std::function<void()> onDismissed; ///< A press went to what is not ours while a popup is open.
    std::function<void()> onKeyPressed;
    std::function<void(uint button, uint modifiers, const PixelRect&)> onIconPressed;

private slots:
    void hear(const QDBusMessage& signal);

private:
    bool enable();

    bool m_isAttached = false;
};

} // namespace WindowServer
