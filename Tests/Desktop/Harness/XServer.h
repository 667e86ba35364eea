#pragma once

#include "Harness/Area.h"
#include "Harness/Folder.h"
#include "Harness/Process.h"

#include <memory>
#include <string>
#include <vector>

namespace Harness {

/// A private X server, on a display number that it picks itself.
class XServer {
public:
    /// One output of 3200x1080 in memory. More arguments go to the server as they are, and the
    /// launcher, a command of its own, starts it where there is one.
    static std::unique_ptr<XServer> framebuffer(const std::vector<std::string>& arguments = {},
                                                std::vector<std::string> launcher = {});

    /// A server with several outputs that can be plugged and unplugged. Null where none can start.
    static std::unique_ptr<XServer> outputs();

    const std::string& display() const { return m_display; } ///< ":7"
    Process& process() { return *m_process; }

    /// Runs xrandr, which speaks to the server the way a user's screen settings do.
    void xrandr(const std::vector<std::string>& arguments) const;
    void setMonitor(const std::string& name, const Area& area, const char* output = "none") const;

private:
    bool start(const std::vector<std::string>& command);

    Folder m_folder;
    std::unique_ptr<Process> m_process;
    std::string m_display;
};

} // namespace Harness
