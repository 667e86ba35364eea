#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace Harness {

using Environment = std::map<std::string, std::string>;

/// A program that the test started. It dies with this object, and with the test if that dies first.
class Process {
public:
    /// Without an environment it has the test's own.
    explicit Process(const std::vector<std::string>& command,
                     const std::optional<Environment>& environment = {});
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t pid() const { return m_pid; }
    void send(int signal);

    /// The exit status, or 128 and the signal that ended it; empty while it runs.
    std::optional<int> status();
    /// The same, once it has ended; empty if it still runs at the deadline.
    std::optional<int> awaitEnd(std::chrono::milliseconds deadline = std::chrono::seconds(10));

    std::string output() const; ///< All of standard output so far.
    std::string errors() const; ///< All of standard error so far.

    /// The processor time it has used so far, in seconds.
    double processorTime() const;

    /// How often it has gone to sleep so far, and so been woken.
    long sleeps() const { return fromStatus("voluntary_ctxt_switches:"); }

    size_t openFiles() const;
    long threads() const { return fromStatus("Threads:"); }
    long memory() const { return fromStatus("VmRSS:"); } ///< In KiB, what of it is in use.

private:
    long fromStatus(const std::string& name) const;

    pid_t m_pid = 0;
    int m_output = -1;
    int m_errors = -1;
    std::optional<int> m_status;
};

/// What a program says until it ends. Throws where it fails.
std::string run(const std::vector<std::string>& command,
                const std::optional<Environment>& environment = {});

} // namespace Harness
