#include "Screens.h"

#include "AppDelegate.h"
#include "Cover.h"
#include "Links.h"
#include "Locked.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace {

class AppMenuTest : public ScreensTest {
protected:
    void TearDown() override {
        Cover::shared()->hide();
        ScreensTest::TearDown();
    }

    /// The texts of the alert that the action opens, which is answered by the button.
    static std::vector<std::string> alertOf(const std::function<void()>& action,
                                            const QString& answer) {
        std::vector<std::string> texts;
        QTimer timer;
        timer.setSingleShot(true);
        timer.callOnTimeout([&] {
            QWidget* const alert = QApplication::activeModalWidget();
            ASSERT_TRUE(alert);
            for (const QLabel* label : alert->findChildren<QLabel*>())
                if (!label->text().isEmpty()) texts.push_back(label->text().toStdString());
            for (QPushButton* button : alert->findChildren<QPushButton*>()) {
                texts.push_back(button->text().toStdString());
                if (button->text() == answer) button->click();
            }
        });
        timer.start(0);
        action();
        return texts;
    }

    std::shared_ptr<AppDelegate> delegate = std::make_shared<AppDelegate>();
};

struct Row {
    std::string title;
    std::string key = {};
    NSUInteger mask = NSEventModifierFlagCommand;
    std::string symbol = {};
    bool acts = true;
};

void expectRow(const NSMenuItem& item, const Row& row) {
    EXPECT_EQ(item.title(), row.title);
    EXPECT_EQ(item.keyEquivalent(), row.key) << row.title;
    EXPECT_EQ(item.keyEquivalentModifierMask(), row.mask) << row.title;
    EXPECT_EQ(item.image() ? item.image()->name() : "", row.symbol) << row.title;
    EXPECT_EQ(static_cast<bool>(item.action()), row.acts) << row.title;
    EXPECT_EQ(item.target() != nullptr, row.acts) << row.title;
}

} // namespace

TEST_F(AppMenuTest, HasTheseRows) {
    const std::vector<std::optional<Row>> rows = {
        Row{"Blur Every Screen", "n", 0x1c0000, ""},
        std::nullopt,
        Row{.title = "Support VARDEK…", .symbol = "heart"},
        Row{.title = "Buy Nimbrel SUMMIT…", .symbol = "star.fill"},
        Row{.title = "More in SUMMIT", .symbol = "lock.fill", .acts = false},
        std::nullopt,
        Row{"Settings…", ","},
        Row{"About Nimbrel Lite"},
        std::nullopt,
        Row{"Quit Nimbrel Lite", "q"},
    };
    const auto menu = delegate->makeMenu();
    ASSERT_EQ(menu->itemArray().size(), rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        const NSMenuItem& item = *menu->itemArray()[i];
        EXPECT_EQ(item.isSeparatorItem(), !rows[i]) << i;
        if (rows[i]) expectRow(item, *rows[i]);
    }

    const auto& submenu = menu->itemArray()[4]->submenu();
    ASSERT_TRUE(submenu);
    EXPECT_EQ(submenu->title(), "More in SUMMIT");
    const auto& features = submenu->itemArray();
    ASSERT_EQ(features.size(), 12u);
    for (size_t i = 0; i < 10; ++i) {
        expectRow(*features[i], {.title = Locked::all[i].title, .symbol = "lock.fill"});
        EXPECT_EQ(std::any_cast<std::string>(features[i]->representedObject()), Locked::all[i].id);
    }
    EXPECT_TRUE(features[10]->isSeparatorItem());
    expectRow(*features[11], {.title = "See Everything in SUMMIT…"});
}

/// A menu that is open keeps its title.
TEST_F(AppMenuTest, ItsFirstRowNamesWhatAClickDoesAndDoesIt) {
    const auto closed = delegate->makeMenu();
    for (const char* title : {"Blur Every Screen", "Show the Screens", "Blur Every Screen"}) {
        const auto menu = delegate->makeMenu();
        NSMenuItem& first = *menu->itemArray()[0];
        EXPECT_EQ(first.title(), title);
        first.action().send(*delegate, first);
    }
    EXPECT_TRUE(Cover::shared()->shown());
    EXPECT_EQ(closed->itemArray()[0]->title(), "Blur Every Screen");
}

TEST_F(AppMenuTest, AFeatureTellsOfItselfInAnAlert) {
    for (const auto& [feature, title] :
         {std::pair{"camera", "Blur when someone looks at your screen"},
          std::pair{"buttons", "Button size & transparency"}}) {
        NSMenuItem item("", nullptr, "");
        item.setRepresentedObject(std::string(feature));
        const auto texts = alertOf([&] { delegate->lockedClicked(item); }, "Not Now");
        ASSERT_EQ(texts.size(), 5u);
        EXPECT_EQ(texts[0], std::string(title) + " is part of Nimbrel SUMMIT");
        EXPECT_EQ(texts[1], Locked::feature(feature)->detail);
        EXPECT_EQ(texts[2], "Get Nimbrel SUMMIT…");
        EXPECT_EQ(texts[3], "Not Now");
        EXPECT_EQ(texts[4], "See Everything in SUMMIT");
    }
}

TEST_F(AppMenuTest, APageWithoutAnAddressIsComing) {
    const auto alertFor = [](Links::Purpose what) {
        return alertOf([what] { Links::open(NSURL::URLWithString(""), what); }, "OK");
    };
    EXPECT_EQ(alertFor(Links::Purpose::upgrade),
              (std::vector<std::string>{
                  "Nimbrel SUMMIT is coming",
                  "Nimbrel SUMMIT will be available from vardek.example soon.", "OK"}));
    EXPECT_EQ(alertFor(Links::Purpose::support),
              (std::vector<std::string>{
                  "Thank you for supporting VARDEK!",
                  "The Support VARDEK page will be available at vardek.example soon.", "OK"}));
}

TEST_F(AppMenuTest, AnItemThatStandsForNoFeatureDoesNothing) {
    for (const std::any& object : {std::any(), std::any(7), std::any(std::string("")),
                                   std::any(std::string("Fade in/out"))}) {
        NSMenuItem item("", nullptr, "");
        item.setRepresentedObject(object);
        EXPECT_TRUE(alertOf([&] { delegate->lockedClicked(item); }, "Not Now").empty());
    }
}
