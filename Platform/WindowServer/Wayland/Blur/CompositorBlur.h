#pragma once

#include "WindowServer/Wayland/Blur/BackgroundBlur.h"

#include <QObject>

#include <functional>

class QFileSystemWatcher;

namespace WindowServer::Wayland {

/// Whether the compositor blurs behind a stage so that no text there can be read. How strongly it
/// does is the user's choice, of which no protocol tells: KWin's stands in its settings, and that
/// of others is not known.
class CompositorBlur : public QObject {
public:
    explicit CompositorBlur(const Connection& connection);

    void attach();

    bool hidesText() const {
        return m_isStrong && BackgroundBlur::isOffered(m_connection.globals());
    }
    std::function<void()> onChanged;

private:
    void settingsChanged();
    bool readStrength() const;

    const Connection& m_connection;
    QFileSystemWatcher* m_files = nullptr;
    bool m_isStrong = false;
};

} // namespace WindowServer::Wayland
