// What the program asks of the system while it is used: no network, no file but its settings, and
// that nobody reads its memory.
#include "Harness/OnDesktop.h"

#include <QRegularExpression>

#include <fstream>

using namespace Harness;

namespace {

/// Puts itself before the program and notes its calls, and the kernel's answers.
class Tracer {
public:
    explicit Tracer(const Folder& folder) : m_log(folder.path() / "calls") {
        const auto script = folder.write(
            "traced", "#!/bin/sh\nexec strace -D -f -qq -s 4096 -o '" + m_log.string() +
                          "' -e trace=network,file,prctl,prlimit64 -e status=successful '" +
                          m_program + "' \"$@\"\n");
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
        ::setenv("NIMBREL_LITE", script.c_str(), true);
    }
    ~Tracer() { ::setenv("NIMBREL_LITE", m_program.c_str(), true); }

    /// What the expression captures, of every call that has it.
    std::vector<std::string> findings(const char* expression) const {
        const QRegularExpression wanted(expression);
        std::vector<std::string> found;
        std::ifstream log(m_log);
        for (std::string line; std::getline(log, line);)
            if (const auto match = wanted.match(QString::fromStdString(line)); match.hasMatch())
                found.push_back(match.captured(1).toStdString());
        return found;
    }

private:
    const std::string m_program = Agent::command().at(0);
    const std::filesystem::path m_log;
};

} // namespace

TEST(LeastPrivilege, NothingIsSentAndOnlySettingsAreWritten) {
    const Folder folder;
    Desktop desktop;
    // The search for leaks would trace what is traced already.
    desktop.extra["ASAN_OPTIONS"] = "detect_leaks=0";
    const std::filesystem::path settings =
        desktop.environment()["XDG_CONFIG_HOME"] + "/com.vardek.NimbrelLite.ini";
    const SessionBus manager; // As good as the session's manager, to which nobody is to connect.
    const auto path = manager.address().section(',', 0, 0).section('=', 1).toStdString();
    desktop.extra["SESSION_MANAGER"] = "local/unix:" + path;
    const Tracer tracer(folder);
    {
        Agent agent(desktop);
        agent.cover();
        ASSERT_SOON(agent.buttons().size() == 2);
        desktop.input.drag(agent.buttons()[0].area, {{1000, 500}, {1800, 300}});
        ASSERT_SOON(std::filesystem::exists(settings));
        agent.choose(Row::summit);
        agent.uncover();
    }
    for (const char* door : {R"((PR_SET_DUMPABLE, (SUID_DUMP_DISABLE|0)))",
                             R"((RLIMIT_CORE, \{rlim_cur=0, rlim_max=0\}))"})
        EXPECT_EQ(tracer.findings(door).size(), 1U) << "what stands on the screens can be taken";
    EXPECT_TRUE(tracer.findings(("(" + path + ")").c_str()).empty());
    const auto sockets = tracer.findings(R"(\bsocket\((\w+))");
    EXPECT_GE(sockets.size(), 2U) << "the server and the bus";
    for (const auto& family : sockets)
        EXPECT_TRUE(family == "AF_UNIX" || family == "AF_LOCAL") << family;
    EXPECT_EQ(tracer.findings(R"(\b((bind|listen|accept4?)\(.*))"), std::vector<std::string>());

    const auto changes =
        tracer.findings(R"re(\b((?:(?:open|openat|creat)\(.*O_(?:WRONLY|RDWR|CREAT))re"
                        R"re(|rename|link|unlink|mkdir|symlink|truncate|chmod).*))re");
    EXPECT_FALSE(changes.empty());
    for (const auto& change : changes)
        EXPECT_NE(change.find(settings.parent_path().string()), std::string::npos) << change;
    const auto programs = tracer.findings(R"(\bexecve\((.*))");
    EXPECT_EQ(programs.size(), 1U) << "itself, and no other";
}
