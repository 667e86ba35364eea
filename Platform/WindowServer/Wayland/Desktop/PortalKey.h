#pragma once

#include "WindowServer/GlobalKey.h"
#include "WindowServer/Wayland/Input/Keymap.h"

#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

namespace WindowServer::Wayland {

/// The chord by way of the desktop's portal for shortcuts.
///
/// The portal may ask the user for leave, and does so for each program once. So the first time it
/// is asked is when the user opens the settings, which tell of the key; from the yes on the key is
/// taken at each start. After a no it is not asked again.
class PortalKey : public QObject, public GlobalKey {
    Q_OBJECT

public:
    explicit PortalKey(const Keymap& keymap) : m_keymap(keymap) {}

    bool take(const KeyChord& chord) override;

    bool eventFilter(QObject* object, QEvent* event) override;

private slots:
    void sessionMade(uint answer);
    void bound(uint answer, const QVariantMap& results);
    void activated(const QDBusMessage& signal);

private:
    void begin();

    const Keymap& m_keymap;
    QString m_trigger; ///< As portals write it. Empty while no chord was asked for.
};

} // namespace WindowServer::Wayland
