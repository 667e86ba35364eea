// The login item as it stands on the disk, in folders of the test's own.
#include "FullDisk.h"
#include "KilledWriter.h"
#include "TextFile.h"

#include "ServiceManagement/DesktopEntry+Private.h"
#include "ServiceManagement/LoginEntry+Private.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

const char* const fileName = "/autostart/com.example.Program.desktop";

struct LoginEntryTest : testing::Test {
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", (folder.path() + "/user").toLocal8Bit());
        qputenv("XDG_CONFIG_DIRS", (folder.path() + "/system").toLocal8Bit());
        qputenv("XDG_CURRENT_DESKTOP", "Nimbus:GNOME");
    }
    void TearDown() override {
        qputenv("XDG_CONFIG_HOME", usualHome);
        qunsetenv("XDG_CONFIG_DIRS");
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    static LoginEntry entryOf(const std::string& program) {
        return LoginEntry({"com.example.Program", "A Program", program});
    }

    static std::string refused(LoginEntry& entry, bool registers) {
        std::shared_ptr<NSError> error;
        const bool done =
            registers ? entry.registerAndReturnError(error) : entry.unregisterAndReturnError(error);
        EXPECT_EQ(done, !error);
        return error ? error->localizedDescription() : "done";
    }
    static std::string registered(LoginEntry& entry) { return refused(entry, true); }
    static std::string unregistered(LoginEntry& entry) { return refused(entry, false); }

    const QTemporaryDir folder;
    const QByteArray usualHome = qgetenv("XDG_CONFIG_HOME");
    const QString own = folder.path() + "/user" + fileName;
    const QString ofSystem = folder.path() + "/system" + fileName;
    LoginEntry entry = entryOf("/bin/true");
};

const QByteArray startsTrue = "[Desktop Entry]\nType=Application\nName=N\nExec=/bin/true\n";

/// What a shell makes of the value of an Exec key, which has the shell's rules for quotes.
QByteArray firstWordInShell(const std::string& commandLine) {
    QString line = QString::fromStdString(commandLine);
    line.replace("\\\\", "\\").replace("%%", "%");
    QProcess shell;
    shell.start("/bin/sh", {"-c", "set -f; printf '%s|' " + line});
    shell.waitForFinished();
    return shell.readAllStandardOutput();
}

} // namespace

TEST_F(LoginEntryTest, IsThereFromRegisteringToUnregistering) {
    EXPECT_EQ(entry.status(), SMAppServiceStatusNotRegistered);
    EXPECT_EQ(unregistered(entry), "done");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(registered(entry), "done");
        EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled);
        EXPECT_EQ(textOf(own), "[Desktop Entry]\nType=Application\nName=A Program\n"
                               "Icon=com.example.Program\nExec=/bin/true\nTryExec=/bin/true\n");
    }
    EXPECT_EQ(unregistered(entry), "done");
    EXPECT_EQ(entry.status(), SMAppServiceStatusNotRegistered);
    EXPECT_EQ(QDir(QFileInfo(own).path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size(),
              0);
}

TEST_F(LoginEntryTest, ItsStatusIsWhatADesktopMakesOfTheFile) {
    const struct {
        QByteArray lines;
        SMAppServiceStatus status;
    } cases[] = {
        {"", SMAppServiceStatusEnabled},
        {"Hidden=false\nX-GNOME-Autostart-enabled=true\n", SMAppServiceStatusEnabled},
        {"Hidden=true\n", SMAppServiceStatusRequiresApproval},
        {" Hidden = true \r\n", SMAppServiceStatusRequiresApproval},
        {"Hidden=1\nExec=/nowhere\n", SMAppServiceStatusRequiresApproval},
        {"X-GNOME-Autostart-enabled=false\n", SMAppServiceStatusRequiresApproval},
        {"X-MATE-Autostart-enabled=false\n", SMAppServiceStatusRequiresApproval},
        {"[Desktop Action A]\nHidden=true\nExec=/nowhere\n", SMAppServiceStatusEnabled},
        {"OnlyShowIn=KDE;\n", SMAppServiceStatusRequiresApproval},
        {"OnlyShowIn=KDE;GNOME\n", SMAppServiceStatusEnabled},
        {"NotShowIn=GNOME;\n", SMAppServiceStatusRequiresApproval},
        {"NotShowIn=KDE;\n", SMAppServiceStatusEnabled},
        {"OnlyShowIn=Nimbus;\nNotShowIn=GNOME;\n", SMAppServiceStatusEnabled},
        {"Exec=true\n", SMAppServiceStatusEnabled},
        {"Exec=env A=1 /nowhere\n", SMAppServiceStatusEnabled},
        {"Exec=/nowhere/true\n", SMAppServiceStatusNotFound},
        {"Exec=/etc/passwd\n", SMAppServiceStatusNotFound},
        {"Exec=/bin\n", SMAppServiceStatusNotFound},
        {"Exec=\"/bin/true\n", SMAppServiceStatusNotFound},
        {"Exec=\n", SMAppServiceStatusNotFound},
        {"TryExec=/nowhere\n", SMAppServiceStatusNotFound},
        {"Type=Link\n", SMAppServiceStatusNotFound},
    };
    for (const auto& [lines, status] : cases) {
        writeText(own, startsTrue + lines);
        EXPECT_EQ(entry.status(), status) << lines.toStdString();
        EXPECT_EQ(registered(entry), "done");
        EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled) << textOf(own).toStdString();
    }
    for (const char* const damaged : {"", "[Desktop", "Exec", "\xff\xfe\n\n"}) {
        writeText(own, damaged);
        EXPECT_EQ(entry.status(), SMAppServiceStatusNotFound) << damaged;
    }
    qunsetenv("XDG_CURRENT_DESKTOP");
    writeText(own, startsTrue + "OnlyShowIn=GNOME;\n");
    EXPECT_EQ(entry.status(), SMAppServiceStatusRequiresApproval);
}

TEST_F(LoginEntryTest, RegisteringKeepsWhatOthersWrote) {
    writeText(own,
              "# Mine\n[Desktop Entry]\nName=Mine\nName[de]=Meins\nType=Application\n"
              "Exec=/elsewhere\nHidden=true\nX-Delay=5\nOnlyShowIn=KDE;\nDBusActivatable=true\n"
              "\n[Desktop Action A]\nExec=/a");
    EXPECT_EQ(registered(entry), "done");
    EXPECT_EQ(textOf(own),
              "# Mine\n[Desktop Entry]\nName=Mine\nName[de]=Meins\nType=Application\n"
              "Exec=/bin/true\nX-Delay=5\nIcon=com.example.Program\nTryExec=/bin/true\n"
              "\n[Desktop Action A]\nExec=/a\n");
}

TEST_F(LoginEntryTest, TheSystemsEntryCountsUntilTheUserHasOne) {
    const QByteArray system = startsTrue + "X-System=1\n";
    writeText(ofSystem, system);
    EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled);
    EXPECT_EQ(unregistered(entry), "done");
    EXPECT_EQ(entry.status(), SMAppServiceStatusRequiresApproval);
    EXPECT_EQ(textOf(own), system + "Hidden=true\n");
    EXPECT_EQ(registered(entry), "done");
    EXPECT_EQ(textOf(own), system + "Icon=com.example.Program\nTryExec=/bin/true\n");
    EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled);
    EXPECT_EQ(textOf(ofSystem), system);

    QFile::remove(own);
    writeText(ofSystem, startsTrue + "Hidden=true\n");
    EXPECT_EQ(entry.status(), SMAppServiceStatusRequiresApproval);
    EXPECT_EQ(unregistered(entry), "done");
    EXPECT_FALSE(QFile::exists(own));
}

TEST_F(LoginEntryTest, NamesAnyProgramSoThatItStarts) {
    const std::string names[] = {
        "plain",     "two words", "quo\"te",       "apo'strophe", "dol$lar$HOME",
        "tick`id`",  "back\\sla", "per%cent",      "per%%F",      "semi;colon",
        "tab\there", "new\nline", "a=b",           "~#*?()<>|&",  "\\\\n\\s",
        "ünïcode",   "%",         " inner blanks", "$(id)"};
    for (const std::string& name : names) {
        const std::string program = folder.path().toStdString() + "/" + name;
        writeText(QString::fromStdString(program), "#!/bin/sh\n");
        QFile::setPermissions(QString::fromStdString(program),
                              QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
        auto its = entryOf(program);
        EXPECT_EQ(registered(its), "done");
        EXPECT_EQ(its.status(), SMAppServiceStatusEnabled) << textOf(own).toStdString();
        if (name.find_first_of("\t\n") == name.npos) {
            EXPECT_EQ(firstWordInShell(commandLineOf(program)).toStdString(), program + "|");
        }

        const QString validator = QStandardPaths::findExecutable("desktop-file-validate");
        if (!validator.isEmpty()) {
            EXPECT_EQ(QProcess::execute(validator, {own}), 0) << textOf(own).toStdString();
        }
        QFile::remove(QString::fromStdString(program));
        EXPECT_EQ(its.status(), SMAppServiceStatusNotFound);
    }
}

TEST_F(LoginEntryTest, ReadsCommandLinesThatOthersWrote) {
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"program --option", "program"},
        {"  \"/a b\" c", "/a b"},
        {"'/a b' c", "/a b"},
        {"/a\\\\ b c", "/a b"},
        {R"("/a\\$b" %U)", "/a$b"},
        {R"("/a\$b")", "/a$b"},
        {R"("/a\sb")", "/a b"},
        {"\"open", std::nullopt},
        {"/50%%", "/50%"},
        {"", ""},
        {"/ends\\", "/ends\\"},
        {R"(/"b "c/d)", "/b c/d"},
    };
    for (const auto& [line, program] : cases)
        EXPECT_EQ(programOf(line), program) << line;
}

TEST_F(LoginEntryTest, ARefusalLosesNothingAndTellsWhy) {
    const QString autostart = QFileInfo(own).path();
    const QString user = folder.path() + "/user";

    writeText(user, "a file");
    EXPECT_THAT(registered(entry), EndsWith(".desktop: Not a directory"));
    EXPECT_EQ(unregistered(entry), "done");
    EXPECT_EQ(textOf(user), "a file");
    QFile::remove(user);

    QDir().mkpath(own);
    EXPECT_THAT(registered(entry), EndsWith(".desktop: Is a directory"));
    EXPECT_THAT(unregistered(entry), EndsWith(".desktop: Is a directory"));
    EXPECT_EQ(entry.status(), SMAppServiceStatusNotRegistered);
    EXPECT_TRUE(QDir().rmdir(own));

    QFile::link("/dev/null", own);
    EXPECT_THAT(registered(entry), EndsWith(".desktop: File exists"));
    EXPECT_EQ(unregistered(entry), "done");
    EXPECT_FALSE(QFileInfo(own).isSymLink());
    EXPECT_FALSE(QFileInfo("/dev/null").isFile());

    QFile::link(own, own);
    EXPECT_THAT(registered(entry), EndsWith(".desktop: Too many levels of symbolic links"));
    EXPECT_TRUE(QFileInfo(own).isSymLink());
    QFile::remove(own);

    writeText(own, QByteArray(2 << 20, '#'));
    EXPECT_THAT(registered(entry), EndsWith(".desktop: File too large"));
    EXPECT_EQ(QFileInfo(own).size(), 2 << 20);
}

TEST_F(LoginEntryTest, ALinkStaysALink) {
    const QString target = folder.path() + "/elsewhere.desktop";
    QDir().mkpath(QFileInfo(own).path());
    QFile::link(target, own);
    EXPECT_EQ(entry.status(), SMAppServiceStatusNotRegistered);
    EXPECT_EQ(registered(entry), "done");
    EXPECT_TRUE(QFileInfo(own).isSymLink());
    EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled);
    const auto kept = textOf(target);
    EXPECT_THAT(kept.toStdString(), HasSubstr("Exec=/bin/true\n"));
    EXPECT_EQ(unregistered(entry), "done");
    EXPECT_FALSE(QFileInfo(own).isSymLink());
    EXPECT_EQ(textOf(target), kept);

    QFile::link(folder.path() + "/nowhere/at all", own);
    EXPECT_THAT(registered(entry), HasSubstr("No such file"));
    EXPECT_TRUE(QFileInfo(own).isSymLink());
}

TEST_F(LoginEntryTest, AFullDiskLosesNothing) {
    writeText(own, startsTrue + "Hidden=true\n");
    const auto reason = [&] {
        const FullDisk full;
        return registered(entry);
    }();
    EXPECT_THAT(reason, EndsWith(".desktop: File too large"));
    EXPECT_EQ(textOf(own), startsTrue + "Hidden=true\n");
    EXPECT_EQ(entry.status(), SMAppServiceStatusRequiresApproval);
}

TEST_F(LoginEntryTest, AnEndInTheMiddleLeavesAWholeEntry) {
    auto other = entryOf("/bin/false");
    EXPECT_EQ(registered(other), "done");
    const auto second = textOf(own);
    EXPECT_EQ(registered(entry), "done");
    const auto first = textOf(own);
    killTheWriter(
        [&] {
            registered(other);
            registered(entry);
        },
        [&] { EXPECT_THAT(textOf(own), testing::AnyOf(first, second)); });
}
