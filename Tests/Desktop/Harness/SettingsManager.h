#pragma once

#include "Harness/Await.h"
#include "Harness/Desktop.h"

#include <csignal>

namespace Harness {

/// The one program that tells all others of the desktop's settings on the X server itself.
class SettingsManager {
public:
    explicit SettingsManager(const Desktop& desktop)
        : m_program(desktop.startOwner(
              "_XSETTINGS_S0", {"xsettingsd", "-c", m_folder.write("settings", "").string()})) {}

    void tell(const std::string& settings) { ///< `Net/ThemeName "Xfce"`, one in each line
        m_folder.write("settings", settings + "\n");
        const auto said = m_program->errors();
        await([&] { // A signal that comes before it listens is lost.
            m_program->send(SIGHUP);
            return m_program->errors() != said;
        });
    }

private:
    Folder m_folder;
    std::unique_ptr<Process> m_program;
};

} // namespace Harness
