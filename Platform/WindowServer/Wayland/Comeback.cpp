#include "WindowServer/Wayland/Comeback.h"

#include "Foundation/NSLog.h"

#include <QString>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <utility>

#include <unistd.h>

namespace WindowServer::Wayland {

namespace {

using namespace std::chrono_literals;

/// Hands the next start how many came in a row, and whether the screens were covered.
constexpr const char* variable = "NIMBREL_LITE_COMEBACK";

constexpr std::chrono::seconds patienceWithCompositor = 10s;
constexpr int mostInARow = 10;
constexpr auto soon = 1min;

/// Before any other part of the program reads the environment, or hands it on.
[[maybe_unused]] const Comeback& theComeback = Comeback::shared();

QtMessageHandler theUsualHandler = nullptr;

/// The toolkit complains as it loses its connection, and gives no other sign before it ends the
/// process.
void listen(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith("The Wayland connection ")) Comeback::shared().begin();
    theUsualHandler(type, context, message);
}

} // namespace

Comeback& Comeback::shared() {
    static Comeback comeback;
    return comeback;
}

Comeback::Comeback() {
    std::error_code none;
    m_program = std::filesystem::read_symlink("/proc/self/exe", none);
    int covered = 0;
    if (const char* const told = std::getenv(variable))
        std::sscanf(told, "%d %d", &m_inARow, &covered);
    m_isCovered = m_isToCover = covered != 0;
    ::unsetenv(variable);
    for (char** each = environ; *each; ++each)
        m_environment.emplace_back(*each);
}

std::chrono::seconds Comeback::patience() const {
    return m_inARow > 0 ? patienceWithCompositor : 0s;
}

bool Comeback::takeUpCover() { return std::exchange(m_isToCover, false); }

void Comeback::prepare() {
    m_isWanted = true;
    theUsualHandler = qInstallMessageHandler(listen);
}

void Comeback::begin() {
    static std::mutex once; // The toolkit may notice in a thread of its own, at the same time.
    once.lock();
    if (!m_isWanted) ::_exit(EXIT_FAILURE);
    if (std::chrono::steady_clock::now() - m_start > soon) m_inARow = 0;
    if (++m_inARow > mostInARow) {
        NSLog("Wayland: the compositor has gone again and again.");
        ::_exit(EXIT_FAILURE);
    }
    NSLog("Wayland: the compositor has gone. Starting anew where it comes back.");
    m_environment.push_back(std::string(variable) + "=" + std::to_string(m_inARow) +
                            (m_isCovered ? " 1" : " 0"));
    std::vector<char*> environment;
    for (std::string& each : m_environment)
        environment.push_back(each.data());
    environment.push_back(nullptr);
    ::execle(m_program.c_str(), m_program.c_str(), nullptr, environment.data());
    ::_exit(EXIT_FAILURE);
}

} // namespace WindowServer::Wayland
