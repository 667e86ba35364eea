#include "Prefs.h"

#include "TextFile.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr ButtonSpot usual = {1.0, 0.62};

/// The store is a file that anyone may have written, and is read anew at every question.
struct PrefsTest : testing::Test {
    void SetUp() override { QFile::remove(path); }
    void TearDown() override { QFile::remove(path); }

    Prefs& prefs = Prefs::shared();
    const QString path = qEnvironmentVariable("XDG_CONFIG_HOME") + "/com.vardek.NimbrelLite.ini";
};

} // namespace

TEST_F(PrefsTest, EachScreensSpotComesBackAsItWasStored) {
    EXPECT_EQ(prefs.buttonSpot(7), usual);
    using Limits = std::numeric_limits<double>;
    for (const double number : {-0.0, 1.0 / 3, 0.1 + 0.2, 1e22, Limits::denorm_min()}) {
        prefs.setButtonSpot(7, number, 1 - number);
        EXPECT_EQ(prefs.buttonSpot(7), (ButtonSpot{number, 1 - number}));
    }
    prefs.setButtonSpot(4294967295, 0, 0.5);
    prefs.setButtonSpot(7, 1, 0.125);
    EXPECT_EQ(textOf(path), "[General]\nbuttonSpot.7=1, 0.125\nbuttonSpot.4294967295=0, 0.5\n");
}

TEST_F(PrefsTest, WhatIsUnusableGivesTheUsualSpot) {
    for (const char* const value :
         {"", ",", "0.5,", "0, 0.5, 1", "left, 0.5", "\"0, 0.5\"", "0x1, 0.5", "0, 0.5 m"}) {
        writeText(path, QByteArray("[General]\nbuttonSpot.7=") + value + "\nbuttonSpot.8=0, 0.5\n");
        EXPECT_EQ(prefs.buttonSpot(7), usual) << value;
        EXPECT_EQ(prefs.buttonSpot(8), (ButtonSpot{0, 0.5})) << value;
    }
}
