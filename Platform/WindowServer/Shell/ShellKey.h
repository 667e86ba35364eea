#pragma once

#include "WindowServer/GlobalKey.h"
#include "WindowServer/Shell/ShellLink.h"

#include <optional>

namespace WindowServer {

/// The chord by the Shell, which hears it whichever window has the keyboard. The X server's is held
/// as well, for as long as there is no extension: it hears it while one of its own windows has.
class ShellKey : public GlobalKey {
public:
    ShellKey(GlobalKey& onServer, ShellLink& link) : m_onServer(onServer), m_link(link) {}

    bool take(const KeyChord& chord) override;

    /// Tells all of it anew.
    void attached();

private:
    bool grab() const;

    GlobalKey& m_onServer;
    ShellLink& m_link;
    std::optional<KeyChord> m_chord;
};

} // namespace WindowServer
