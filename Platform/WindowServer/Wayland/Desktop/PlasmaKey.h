#pragma once

#include "WindowServer/GlobalKey.h"
#include "WindowServer/Wayland/Input/Keymap.h"

#include <QObject>

namespace WindowServer::Wayland {

/// The chord by way of Plasma's own service for shortcuts, which grants it without asking the user.
class PlasmaKey : public QObject, public GlobalKey {
    Q_OBJECT

public:
    static bool isOffered();

    explicit PlasmaKey(const Keymap& keymap) : m_keymap(keymap) {}

    bool take(const KeyChord& chord) override;

private slots:
    void pressed(const QString& component, const QString& action, qlonglong time);

private:
    void letGo() const;

    const Keymap& m_keymap;
    bool m_isTaken = false;
};

} // namespace WindowServer::Wayland
