#include "Prefs.h"

#include "FullDisk.h"
#include "KilledWriter.h"
#include "TextFile.h"

#include <cmath>
#include <limits>

#include <sys/stat.h>

namespace {

constexpr ButtonSpot usual = {1.0, 0.62};

/// The store is a file that anyone may have written, and is read anew at every question.
struct PrefsTest : testing::Test {
    void SetUp() override { QFile::remove(path); }
    void TearDown() override { QFile::remove(path); }

    void write(const QByteArray& text) const { writeText(path, text); }
    QByteArray text() const { return textOf(path); }

    Prefs& prefs = Prefs::shared();
    const QString path = qEnvironmentVariable("XDG_CONFIG_HOME") + "/com.vardek.NimbrelLite.ini";
};

} // namespace

TEST_F(PrefsTest, ACleanStoreGivesTheUsualSpotAndStaysClean) {
    EXPECT_EQ(prefs.buttonSpot(7), usual);
    EXPECT_FALSE(prefs.d.boolForKey("loginAsked"));
    prefs.d.removeObjectForKey("strength");
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(PrefsTest, EverySpotComesBackAsItWasStored) {
    using Limits = std::numeric_limits<double>;
    for (const double number : {-0.0, 1.0 / 3, 0.1 + 0.2, -7.25, 1e22, Limits::max(),
                                Limits::denorm_min(), -Limits::infinity()}) {
        prefs.setButtonSpot(7, number, 1 - number);
        EXPECT_EQ(prefs.buttonSpot(7), (ButtonSpot{number, 1 - number}));
    }
    prefs.setButtonSpot(7, 0, Limits::quiet_NaN());
    EXPECT_TRUE(std::isnan(prefs.buttonSpot(7).down));
}

TEST_F(PrefsTest, EachScreenHasItsOwnSpot) {
    prefs.setButtonSpot(1, 0, 0.25);
    prefs.setButtonSpot(12, 1, 0.75);
    prefs.setButtonSpot(4294967295, 0, 0.5);
    prefs.setButtonSpot(1, 1, 0.125);
    EXPECT_EQ(prefs.buttonSpot(1), (ButtonSpot{1, 0.125}));
    EXPECT_EQ(prefs.buttonSpot(12), (ButtonSpot{1, 0.75}));
    EXPECT_EQ(prefs.buttonSpot(4294967295), (ButtonSpot{0, 0.5}));
    EXPECT_EQ(prefs.buttonSpot(2), usual);
    EXPECT_EQ(text(), "[General]\nbuttonSpot.1=1, 0.125\nbuttonSpot.12=1, 0.75\n"
                      "buttonSpot.4294967295=0, 0.5\n");
}

TEST_F(PrefsTest, WhatIsUnusableGivesTheUsualSpot) {
    const char* const values[] = {"",           ",",         "0.5",        "0.5,",
                                  "0, 0.5, 1",  "left, 0.5", "\"0, 0.5\"", "true, 0.5",
                                  "0,5, 0,62",  "0x1, 0.5",  "0, ",        "0 0.5",
                                  "1e999, 0.5", "0, 0.5 m",  "[0, 0.5]",   "@Invalid()"};
    for (const char* const value : values) {
        write(QByteArray("[General]\nbuttonSpot.7=") + value + "\nbuttonSpot.8=0, 0.5\n");
        EXPECT_EQ(prefs.buttonSpot(7), usual) << value;
        EXPECT_EQ(prefs.buttonSpot(8), (ButtonSpot{0, 0.5})) << value;
    }
}

TEST_F(PrefsTest, ADamagedFileGivesTheUsualSpotAndCanBeWrittenAgain) {
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise.append(static_cast<char>(i * i * 31 + i / 7));
    const QByteArray files[] = {"",
                                "\n\n\n",
                                QByteArray(1, '\0'),
                                noise,
                                "[General",
                                "[General]\nbuttonSp",
                                "[General]\nbuttonSpot.7",
                                "[General]\nbuttonSpot.7=0,",
                                "[Elsewhere]\nbuttonSpot.7=0, 0.5\n"};
    for (const auto& file : files) {
        write(file);
        EXPECT_EQ(prefs.buttonSpot(7), usual) << file.toStdString();
        EXPECT_FALSE(prefs.d.boolForKey("loginAsked")) << file.toStdString();
        prefs.setButtonSpot(7, 0, 0.25);
        EXPECT_EQ(prefs.buttonSpot(7), (ButtonSpot{0, 0.25})) << file.toStdString();
    }
}

TEST_F(PrefsTest, LeavesEverythingElseInTheFileAlone) {
    write("top=1\n; remark\n[General]\r\n strength = 3\r\nloginAsked=true\n\xff\xfe=junk\nstyle=2\n"
          "strength=4\n[Other]\nstrength=5\nlast=no newline");
    prefs.d.removeObjectForKey("strength");
    prefs.d.removeObjectForKey("style");
    prefs.setButtonSpot(7, 0, 0.5);
    EXPECT_EQ(text(), "top=1\n; remark\n[General]\r\nloginAsked=true\n\xff\xfe=junk\n"
                      "buttonSpot.7=0, 0.5\n[Other]\nstrength=5\nlast=no newline\n");
    EXPECT_TRUE(prefs.d.boolForKey("loginAsked"));
}

TEST_F(PrefsTest, KeepsWhatCannotBeWrittenUntilItCan) {
    ASSERT_TRUE(QDir().mkdir(path)); // In the place of the file.
    prefs.setButtonSpot(7, 0, 0.5);
    prefs.d.setBool(true, "loginAsked");
    EXPECT_EQ(prefs.buttonSpot(7), (ButtonSpot{0, 0.5}));
    EXPECT_TRUE(prefs.d.boolForKey("loginAsked"));
    ASSERT_TRUE(QDir().rmdir(path));
    prefs.d.setBool(false, "loginAsked");
    EXPECT_EQ(text(), "[General]\nbuttonSpot.7=0, 0.5\nloginAsked=false\n");
}

TEST_F(PrefsTest, AFullDiskLosesNothing) {
    prefs.setButtonSpot(7, 0, 0.25);
    const auto before = text();
    {
        const FullDisk full;
        prefs.setButtonSpot(7, 1, 0.75);
    }
    EXPECT_EQ(text(), before);
    EXPECT_EQ(prefs.buttonSpot(7), (ButtonSpot{1, 0.75}));
    prefs.setButtonSpot(8, 0, 0.5);
    EXPECT_EQ(text(), "[General]\nbuttonSpot.7=1, 0.75\nbuttonSpot.8=0, 0.5\n");
}

TEST_F(PrefsTest, AnEndInTheMiddleLosesNothing) {
    prefs.d.setBool(true, "loginAsked");
    const ButtonSpot first = {0, 0.25}, second = {1, 1.0 / 3};
    prefs.setButtonSpot(7, first.side, first.down);
    killTheWriter(
        [&] {
            prefs.setButtonSpot(7, second.side, second.down);
            prefs.setButtonSpot(7, first.side, first.down);
        },
        [&] {
            const ButtonSpot found = prefs.buttonSpot(7);
            EXPECT_TRUE(found == first || found == second) << text().toStdString();
            EXPECT_TRUE(prefs.d.boolForKey("loginAsked")) << text().toStdString();
        });
}

TEST_F(PrefsTest, WaitsForNothingAndTouchesNoOtherKindOfFile) {
    ASSERT_EQ(mkfifo(path.toLocal8Bit(), 0600), 0);
    EXPECT_EQ(prefs.buttonSpot(7), usual);
    prefs.setButtonSpot(7, 0, 0.5);
    EXPECT_FALSE(QFileInfo(path).isFile());
    QFile::remove(path);
    prefs.setButtonSpot(7, 0, 0.5);

    QFile link(path);
    ASSERT_TRUE(link.rename(path + ".real"));
    ASSERT_TRUE(QFile::link(path + ".real", path));
    prefs.setButtonSpot(7, 1, 0.5);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(prefs.buttonSpot(7), (ButtonSpot{1, 0.5}));
    QFile::remove(path + ".real");
}
