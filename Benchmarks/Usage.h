#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

namespace Benchmarks {

/// The processor time of all threads of a process so far, in milliseconds.
double processorTime(pid_t process);

/// How often the threads of a process were given a processor and lost it again so far.
long contextSwitches(pid_t process);

/// The memory that the system has had to find for a process page by page so far, in megabytes.
double memoryFound(pid_t process);

/// A field of the process's `status` or `smaps_rollup`, in megabytes; empty where it cannot be
/// read.
std::optional<double> memory(pid_t process, const std::string& file, const std::string& field);

} // namespace Benchmarks
