#include "Harness/Keys.h"
#include "Harness/NotifierTray.h"
#include "Harness/OnDesktop.h"
#include "Harness/Portal.h"

#include <QDBusArgument>
#include <QImage>

#include <algorithm>

using namespace Harness;

namespace {

using Pictures = std::map<int, QByteArray>; // By their width.

Pictures takePictures(const QDBusArgument& argument) {
    Pictures pictures;
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        argument.beginStructure();
        argument >> width >> height >> pixels;
        argument.endStructure();
        EXPECT_EQ(pixels.size(), width * height * 4);
        pictures[width] = pixels;
    }
    argument.endArray();
    return pictures;
}

Pictures iconOf(NotifierTray& tray) {
    return takePictures(tray.property("IconPixmap").value<QDBusArgument>());
}

QString toolTipOf(NotifierTray& tray) {
    const auto argument = tray.property("ToolTip").value<QDBusArgument>();
    QString icon;
    QString title;
    argument.beginStructure();
    argument >> icon;
    takePictures(argument);
    argument >> title;
    argument.endStructure();
    return title;
}

} // namespace

TEST(TrayOnTheBus, HasTheItemEachTimeThatItComes) {
    Desktop desktop;
    desktop.tray.reset();
    Agent agent(desktop);
    for (int i = 0; i < 10; ++i) {
        NotifierTray tray(desktop.bus->address());
        ASSERT_TRUE(await([&] { return !tray.items().empty(); })) << i;
        EXPECT_EQ(tray.property("Title").toString(), "Nimbrel Lite") << i;
        EXPECT_EQ(toolTipOf(tray),
                  "Nimbrel Lite: click to blur or show every screen, right-click for the menu");
        const Pictures clear = iconOf(tray);
        for (const int size : {16, 22, 24, 32, 44, 48, 64})
            EXPECT_TRUE(clear.contains(size)) << size;

        tray.click(1000, 10);
        EXPECT_TRUE(await([&] { return agent.isCovered(); })) << i;
        EXPECT_TRUE(await([&] { return iconOf(tray) != clear; })) << i;
        tray.click(1000, 10);
        EXPECT_TRUE(await([&] { return agent.visibleCovers().empty(); })) << i;
        EXPECT_TRUE(await([&] { return iconOf(tray) == clear; })) << i;
    }
}

namespace {

/// The keys that a row says to be its own.
std::string keysOf(const NotifierTray::Row& row) {
    QList<QStringList> chords;
    if (row.properties.contains("shortcut"))
        row.properties["shortcut"].value<QDBusArgument>() >> chords;
    return chords.value(0).join('+').toStdString();
}

QImage pictureOf(const NotifierTray::Row& row) {
    return QImage::fromData(row.properties["icon-data"].toByteArray());
}

struct TrayMenu : OnDesktop {
    TrayMenu() {
        desktop.tray.reset();
        tray.emplace(desktop.bus->address());
        agent.emplace(desktop);
        EXPECT_TRUE(await([&] { return !tray->items().empty() && !tray->menu().rows.empty(); }));
    }

    std::optional<NotifierTray> tray;
};

} // namespace

TEST_F(TrayMenu, IsTheProgramsOwn) {
    const auto menu = tray->menu();
    const std::vector<std::string> titles = {"Blur Every Screen",
                                             "",
                                             "Support VARDEK…",
                                             "Buy Nimbrel SUMMIT…",
                                             "More in SUMMIT",
                                             "",
                                             "Settings…",
                                             "About Nimbrel Lite",
                                             "",
                                             "Quit Nimbrel Lite"};
    EXPECT_EQ(menu.titles(), titles);
    for (const auto& row : menu.rows) {
        const bool isLine = row.title().isEmpty();
        EXPECT_EQ(row.properties["type"].toString(), isLine ? "separator" : "");
        EXPECT_EQ(row.properties["enabled"].toBool(), !isLine) << row.title().toStdString();
    }
    const auto more = menu["More in SUMMIT"];
    EXPECT_EQ(more.properties["children-display"].toString(), "submenu");
    ASSERT_EQ(more.rows.size(), 12u);
    EXPECT_EQ(more.titles()[1], "_Hand gestures & wink") << "with the mark of a letter";
    EXPECT_EQ(more.rows.back().title(), "See Everything in SUMMIT…");
    const std::pair<const char*, const char*> keys[] = {
        {"Blur Every Screen", "Super+Control+Alt+N"},
        {"Settings…", "Super+,"},
        {"About Nimbrel Lite", ""},
        {"Quit Nimbrel Lite", "Super+Q"}};
    for (const auto& [title, chord] : keys)
        EXPECT_EQ(keysOf(menu[title]), chord) << title;
}

TEST_F(TrayMenu, HasPicturesInTheColourOfTheDesktop) {
    Portal portal(desktop.bus->address(), false);
    for (const bool dark : {true, false}) {
        portal.setDark(dark);
        EXPECT_TRUE(await([&] {
            const QImage star = pictureOf(tray->menu()["Buy Nimbrel SUMMIT…"]);
            const QColor middle = star.pixelColor(star.width() / 2, star.height() / 2);
            return star.pixelColor(0, 0).alpha() == 0 && middle.alpha() == 255 &&
                   (middle.lightness() > 127) == dark;
        })) << dark;
    }
}

TEST_F(TrayMenu, DoesWhatIsChosenInIt) {
    for (int i = 0; i < 2; ++i) {
        tray->choose(tray->menu()["Blur Every Screen"]);
        EXPECT_TRUE(await([&] { return agent->isCovered(); }));
        tray->choose(tray->menu()["Show the Screens"]);
        EXPECT_TRUE(await([&] { return agent->visibleCovers().empty(); }));
        tray->click(1000, 10); // A click on the icon toggles all the same,
        EXPECT_TRUE(await([&] { return agent->isCovered(); }));
        tray->click(1000, 10);
        EXPECT_TRUE(await([&] { return agent->visibleCovers().empty(); }));
        tray->rightClick(1000, 10); // and the other button opens the program's own.
        EXPECT_TRUE(await([&] { return agent->menus().size() == 1; }));
        desktop.input.strike(escapeKey);
        EXPECT_TRUE(await([&] { return agent->menus().empty(); }));
    }
    const auto windows = [&] {
        return std::ranges::count_if(desktop.screen.windows(), [](const ScreenWindow& window) {
            return window.viewable && window.className == "nimbrel-lite" &&
                   window.area.width > 200 && window.instance != "menu";
        });
    };
    tray->choose(tray->menu()["Settings…"]);
    EXPECT_TRUE(await([&] { return windows() == 1; }));
    tray->choose(tray->menu()["More in SUMMIT"].rows.at(0)); // Its alert waits; the tray does not.
    EXPECT_TRUE(await([&] { return windows() == 2; }));
    tray->choose(tray->menu()["Quit Nimbrel Lite"]);
    EXPECT_EQ(agent->process().awaitEnd(), 0);
}

TEST_F(TrayMenu, TellsTheStateAlsoAfterTheProgramsOwnWasOpenMeanwhile) {
    tray->rightClick(1000, 10);
    ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
    strikeTogether({controlKey, altKey, superKey, nKey});
    EXPECT_TRUE(await([&] { return agent->isCovered(); }));
    EXPECT_EQ(agent->menus().size(), 1u);
    desktop.input.strike(escapeKey);
    EXPECT_TRUE(await([&] { return agent->menus().empty(); }));
    EXPECT_TRUE(await([&] { return tray->menu().rows.at(0).title() == "Show the Screens"; }));
}
