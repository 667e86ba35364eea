#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace WindowServer::Wayland {

/// How the program outlives its compositor. The toolkit cannot join another one, and ends the
/// process as it loses its own. So the process starts the program anew in its own place, and that
/// waits for the compositor and covers the screens again.
class Comeback {
public:
    static Comeback& shared();

    /// How long a compositor that is not there yet is waited for. Zero at a user's start.
    std::chrono::seconds patience() const;
    /// Whether the screens were covered and nobody has been told so yet. Tells it once.
    bool takeUpCover();

    /// There is a compositor that can be lost.
    void prepare();
    /// What the next start is to know.
    void noteCovered(bool covered) { m_isCovered = covered; }
    /// The program is about to quit.
    void forgo() { m_isWanted = false; }

    /// The compositor has gone.
    [[noreturn]] void begin();

private:
    Comeback();

    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::string m_program;
    std::vector<std::string> m_environment; ///< As it was found.
    int m_inARow = 0;                       ///< Starts that each came soon after the one before.
    bool m_isCovered = false;
    bool m_isToCover = false;
    bool m_isWanted = false;
};

} // namespace WindowServer::Wayland
