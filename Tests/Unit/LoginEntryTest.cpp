// The login item as it stands on the disk, in folders of the test's own. What a file of any bytes
// does is with the fuzz targets.
#include "ServiceManagement/DesktopEntry+Private.h"
#include "ServiceManagement/ServiceManagement.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

void writeText(const QString& path, const QByteArray& text) {
    const std::filesystem::path file = path.toStdString();
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << text.toStdString();
}

QByteArray textOf(const QString& path) {
    std::ifstream stream(path.toStdString());
    return QByteArray::fromStdString({std::istreambuf_iterator(stream), {}});
}

struct LoginEntryTest : testing::Test {
    LoginEntryTest() {
        qputenv("XDG_CONFIG_HOME", (folder.path() + "/user").toLocal8Bit());
        qputenv("XDG_CONFIG_DIRS", (folder.path() + "/system").toLocal8Bit());
        qputenv("XDG_CURRENT_DESKTOP", "Nimbus:GNOME");
    }
    static void expectRegistered(SMAppService& entry) {
        std::shared_ptr<NSError> error;
        EXPECT_TRUE(entry.registerAndReturnError(error)) << error->localizedDescription();
        EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled);
    }
    void expectUnregistered() {
        std::shared_ptr<NSError> error;
        EXPECT_TRUE(entry.unregisterAndReturnError(error)) << error->localizedDescription();
    }

    const QTemporaryDir folder;
    const QString own = folder.path() + "/user/autostart/com.example.Program.desktop";
    const QString ofSystem = folder.path() + "/system/autostart/com.example.Program.desktop";
    SMAppService entry{{"com.example.Program", "A Program", "/bin/true"}};
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
        expectRegistered(entry);
    }
    expectUnregistered();
    EXPECT_EQ(entry.status(), SMAppServiceStatusNotRegistered);

    writeText(ofSystem, startsTrue); // It counts until the user has one.
    EXPECT_EQ(entry.status(), SMAppServiceStatusEnabled);
    expectUnregistered();
    EXPECT_EQ(entry.status(), SMAppServiceStatusRequiresApproval);
    EXPECT_EQ(textOf(own), startsTrue + "Hidden=true\n");
    EXPECT_EQ(textOf(ofSystem), startsTrue);
}

TEST_F(LoginEntryTest, RegisteringKeepsWhatOthersWrote) {
    writeText(own,
              "# Mine\n[Desktop Entry]\nName=Mine\nName[de]=Meins\nType=Application\n"
              "Exec=/elsewhere\nHidden=true\nX-Delay=5\nOnlyShowIn=KDE;\nDBusActivatable=true\n"
              "\n[Desktop Action A]\nExec=/a");
    expectRegistered(entry);
    EXPECT_EQ(textOf(own),
              "# Mine\n[Desktop Entry]\nName=Mine\nName[de]=Meins\nType=Application\n"
              "Exec=/bin/true\nX-Delay=5\nIcon=com.example.Program\nTryExec=/bin/true\n"
              "\n[Desktop Action A]\nExec=/a");
}

// The shell and the desktops' own checker read what was written.
TEST_F(LoginEntryTest, NamesAnyProgramSoThatItStarts) {
    for (const std::string name : {"plain", " two blanks", "quo\"te'", "dol$lar`id`",
                                   "back\\sla\\\\n", "per%%cent%", "~#*?()<>|&;=", "ünïcode"}) {
        const QString program = folder.path() + "/" + QString::fromStdString(name);
        writeText(program, "#!/bin/sh\n");
        QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        SMAppService its({"com.example.Program", "A Program", program.toStdString()});
        expectRegistered(its);
        EXPECT_EQ(QProcess::execute("desktop-file-validate", {own}), 0) << name;

        QString line = QString::fromUtf8(commandLineOf(program.toUtf8()));
        line.replace("\\\\", "\\").replace("%%", "%");
        QProcess shell;
        shell.start("/bin/sh", {"-c", "set -f; printf '%s|' " + line});
        shell.waitForFinished();
        EXPECT_EQ(shell.readAllStandardOutput(), program.toUtf8() + "|");
    }
}
