// The login item as it stands on the disk, in folders of the test's own. What a file of any bytes
// does is with the fuzz targets.
#include "TextFile.h"

#include "ServiceManagement/LoginEntry+Private.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTemporaryDir>

#include <sys/stat.h>

using testing::EndsWith;

namespace {

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

    static std::string change(LoginEntry& entry,
                              bool (LoginEntry::*call)(std::shared_ptr<NSError>&)) {
        std::shared_ptr<NSError> error;
        const bool done = (entry.*call)(error);
        EXPECT_EQ(done, !error);
        return error ? error->localizedDescription() : "done";
    }
    static std::string registered(LoginEntry& entry) {
        return change(entry, &LoginEntry::registerAndReturnError);
    }
    static std::string unregistered(LoginEntry& entry) {
        return change(entry, &LoginEntry::unregisterAndReturnError);
    }

    const QTemporaryDir folder;
    const QByteArray usualHome = qgetenv("XDG_CONFIG_HOME");
    const QString own = folder.path() + "/user/autostart/com.example.Program.desktop";
    const QString ofSystem = folder.path() + "/system/autostart/com.example.Program.desktop";
    LoginEntry entry{{"com.example.Program", "A Program", "/bin/true"}};
};

const QByteArray startsTrue = "[Desktop Entry]\nType=Application\nName=N\nExec=/bin/true\n";

} // namespace

TEST_F(LoginEntryTest, ItsStatusIsWhatADesktopMakesOfTheFile) {
    EXPECT_EQ(entry.status(), SMAppServiceStatusNotRegistered);
    const std::pair<const char*, SMAppServiceStatus> cases[] = {
        {"Hidden=false\nX-GNOME-Autostart-enabled=true\n", SMAppServiceStatusEnabled},
        {" Hidden = true \r\n", SMAppServiceStatusRequiresApproval},
        {"Hidden=1\nExec=/nowhere\n", SMAppServiceStatusRequiresApproval},
        {"X-MATE-Autostart-enabled=false\n", SMAppServiceStatusRequiresApproval},
        {"[Desktop Action A]\nHidden=true\nExec=/nowhere\n", SMAppServiceStatusEnabled},
        {"OnlyShowIn=KDE;\n", SMAppServiceStatusRequiresApproval},
        {"OnlyShowIn=KDE;GNOME\n", SMAppServiceStatusEnabled},
        {"NotShowIn=GNOME;\n", SMAppServiceStatusRequiresApproval},
        {"OnlyShowIn=Nimbus;\nNotShowIn=GNOME;\n", SMAppServiceStatusEnabled},
        {"Exec=true --option\n", SMAppServiceStatusEnabled},
        {"Exec=\"/bin/true\n", SMAppServiceStatusNotFound},
        {"TryExec=/nowhere\n", SMAppServiceStatusNotFound},
        {"Type=Link\n", SMAppServiceStatusNotFound},
    };
    for (const auto& [lines, status] : cases) {
        writeText(own, startsTrue + lines);
        EXPECT_EQ(entry.status(), status) << lines;
        EXPECT_EQ(registered(entry), "done");
        EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled) << textOf(own).toStdString();
    }
    EXPECT_EQ(unregistered(entry), "done");
    EXPECT_EQ(entry.status(), SMAppServiceStatusNotRegistered);

    writeText(ofSystem, startsTrue); // It counts until the user has one.
    EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled);
    EXPECT_EQ(unregistered(entry), "done");
    EXPECT_EQ(entry.status(), SMAppServiceStatusRequiresApproval);
    EXPECT_EQ(textOf(own), startsTrue + "Hidden=true\n");
    EXPECT_EQ(textOf(ofSystem), startsTrue);
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

// The shell and the desktops' own checker read what was written.
TEST_F(LoginEntryTest, NamesAnyProgramSoThatItStarts) {
    for (const std::string name : {"plain", " two blanks", "quo\"te'", "dol$lar`id`",
                                   "back\\sla\\\\n", "per%%cent%", "~#*?()<>|&;=", "ünïcode"}) {
        const QString program = folder.path() + "/" + QString::fromStdString(name);
        writeText(program, "#!/bin/sh\n");
        QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        LoginEntry its({"com.example.Program", "A Program", program.toStdString()});
        EXPECT_EQ(registered(its), "done");
        EXPECT_EQ(its.status(), SMAppServiceStatusEnabled) << textOf(own).toStdString();
        EXPECT_EQ(QProcess::execute("desktop-file-validate", {own}), 0) << name;

        QString line = QString::fromStdString(commandLineOf(program.toStdString()));
        line.replace("\\\\", "\\").replace("%%", "%");
        QProcess shell;
        shell.start("/bin/sh", {"-c", "set -f; printf '%s|' " + line});
        shell.waitForFinished();
        EXPECT_EQ(shell.readAllStandardOutput(), program.toUtf8() + "|");
    }
}

TEST_F(LoginEntryTest, ARefusalLosesNothingAndTellsWhy) {
    writeText(folder.path() + "/user", "a file");
    EXPECT_THAT(registered(entry), EndsWith(".desktop: Not a directory"));
    QFile::remove(folder.path() + "/user");
    QDir().mkpath(own);
    EXPECT_THAT(registered(entry), EndsWith(".desktop: Not a file"));
    EXPECT_THAT(unregistered(entry), EndsWith(".desktop: Is a directory"));
    QDir().rmdir(own);
    ASSERT_EQ(mkfifo(own.toLocal8Bit(), 0600), 0);
    EXPECT_THAT(registered(entry), EndsWith(".desktop: Not a file"));
    writeText(own, QByteArray(2 << 20, '#'));
    EXPECT_THAT(registered(entry), EndsWith(".desktop: File too large"));
}
