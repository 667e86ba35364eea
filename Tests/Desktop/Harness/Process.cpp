#include "Harness/Process.h"

#include "Harness/Await.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Harness {

namespace {

std::vector<char*> pointers(std::vector<std::string>& strings) {
    std::vector<char*> result;
    for (std::string& string : strings)
        result.push_back(string.data());
    result.push_back(nullptr);
    return result;
}

std::string contents(int file) {
    std::string text;
    char buffer[4096];
    ssize_t length = 0;
    while ((length = pread(file, buffer, sizeof buffer, static_cast<off_t>(text.size()))) > 0)
        text.append(buffer, static_cast<size_t>(length));
    return text;
}

} // namespace

Process::Process(const std::vector<std::string>& command,
                 const std::optional<Environment>& environment)
    : m_output(memfd_create("output", MFD_CLOEXEC)), m_errors(memfd_create("errors", MFD_CLOEXEC)) {
    std::vector<std::string> arguments = command;
    std::vector<std::string> variables;
    for (const auto& [name, value] : environment.value_or(Environment()))
        variables.push_back(name + "=" + value);
    const std::vector<char*> argv = pointers(arguments);
    const std::vector<char*> envp = pointers(variables);

    m_pid = fork();
    if (m_pid < 0) throw std::runtime_error("no process for " + command.front());
    if (m_pid > 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(m_output, STDOUT_FILENO);
    dup2(m_errors, STDERR_FILENO);
    execvpe(argv[0], argv.data(), environment ? envp.data() : environ);
    _exit(127);
}

Process::~Process() {
    send(SIGKILL);
    awaitEnd();
    close(m_output);
    close(m_errors);
}

void Process::send(int signal) {
    if (!status()) kill(m_pid, signal);
}

std::optional<int> Process::status() {
    int word = 0;
    if (!m_status && waitpid(m_pid, &word, WNOHANG) == m_pid)
        m_status = WIFEXITED(word) ? WEXITSTATUS(word) : 128 + WTERMSIG(word);
    return m_status;
}

std::optional<int> Process::awaitEnd(std::chrono::milliseconds deadline) {
    await([this] { return status().has_value(); }, deadline);
    return m_status;
}

std::string Process::output() const { return contents(m_output); }

std::string Process::errors() const { return contents(m_errors); }

double Process::processorTime() const {
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(m_pid, &clock) || clock_gettime(clock, &time)) return 0;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

long Process::fromStatus(const std::string& name) const {
    std::ifstream file("/proc/" + std::to_string(m_pid) + "/status");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(name)) return std::stol(line.substr(name.size()));
    return 0;
}

size_t Process::openFiles() const {
    const std::filesystem::directory_iterator files("/proc/" + std::to_string(m_pid) + "/fd");
    return static_cast<size_t>(std::distance(begin(files), end(files)));
}

std::string run(const std::vector<std::string>& command,
                const std::optional<Environment>& environment) {
    Process process(command, environment);
    if (process.awaitEnd(30s) != 0)
        throw std::runtime_error(command.front() + ": " + process.errors());
    return process.output();
}

} // namespace Harness
