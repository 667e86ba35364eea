#include "Usage.h"

#include <filesystem>
#include <fstream>
#include <functional>

#include <unistd.h>

namespace Benchmarks {

namespace {

using std::filesystem::path;

constexpr double megabyte = 1024 * 1024;

path folderOf(pid_t process) { return path("/proc") / std::to_string(process); }

double sumOfThreads(pid_t process, const std::function<double(const path&)>& valueOf) {
    double sum = 0;
    for (const auto& thread : std::filesystem::directory_iterator(folderOf(process) / "task"))
        sum += valueOf(thread.path());
    return sum;
}

std::optional<double> field(const path& file, const std::string& name) {
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(name + ":")) return std::stod(line.substr(name.size() + 1));
    return std::nullopt;
}

} // namespace

double processorTime(pid_t process) {
    return sumOfThreads(process, [](const path& thread) {
        double nanoseconds = 0;
        std::ifstream(thread / "schedstat") >> nanoseconds;
        return nanoseconds / 1e6;
    });
}

long contextSwitches(pid_t process) {
    return static_cast<long>(sumOfThreads(process, [](const path& thread) {
        return field(thread / "status", "voluntary_ctxt_switches").value_or(0) +
               field(thread / "status", "nonvoluntary_ctxt_switches").value_or(0);
    }));
}

double memoryFound(pid_t process) {
    std::ifstream file(folderOf(process) / "stat");
    // Faults served without the disk are the tenth field.
    std::string word;
    for (int number = 1; number < 10; ++number)
        file >> word;
    double faults = 0;
    file >> faults;
    return faults * static_cast<double>(sysconf(_SC_PAGESIZE)) / megabyte;
}

std::optional<double> memory(pid_t process, const std::string& file, const std::string& name) {
    const auto kilobytes = field(folderOf(process) / file, name);
    if (!kilobytes) return std::nullopt;
    return *kilobytes / 1024;
}

} // namespace Benchmarks
