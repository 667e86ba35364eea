#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/NotifierTray.h"

#include <QDBusArgument>

#include <gtest/gtest.h>

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
        for (const int size : {16, 22, 24, 48})
            EXPECT_TRUE(clear.contains(size)) << size;

        tray.click(1000, 10);
        EXPECT_TRUE(await([&] { return agent.isCovered(); })) << i;
        EXPECT_TRUE(await([&] { return iconOf(tray) != clear; })) << i;
        tray.click(1000, 10);
        EXPECT_TRUE(await([&] { return agent.visibleCovers().empty(); })) << i;
        EXPECT_TRUE(await([&] { return iconOf(tray) == clear; })) << i;
    }
}
