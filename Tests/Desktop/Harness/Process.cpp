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

Environment inheritedEnvironment() {
    Environment environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const size_t equals = text.find('=');
        environment[text.substr(0, equals)] = text.substr(equals + 1);
    }
    return environment;
}

Process::Process(const std::vector<std::string>& command, const Environment& environment)
    : m_output(memfd_create("output", MFD_CLOEXEC)), m_errors(memfd_create("errors", MFD_CLOEXEC)) {
    std::vector<std::string> arguments = command;
    std::vector<std::string> variables;
    for (const auto& [name, value] : environment)
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
    execvpe(argv[0], argv.data(), envp.data());
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
    std::ifstream file("/proc/" + std::to_string(m_pid) + "/stat");
    std::string word;
    // The command's name is the second field; user and system time are the 14th and the 15th.
    for (int field = 1; field < 14; ++field)
        file >> word;
    double user = 0;
    double system = 0;
    file >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
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

} // namespace Harness
