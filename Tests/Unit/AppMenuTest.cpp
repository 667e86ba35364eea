#include "Screens.h"

#include "AppDelegate.h"
#include "Cover.h"
#include "Links.h"
#include "Locked.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QWindow>

#include <algorithm>

namespace {

class AppMenuTest : public ScreensTest {
protected:
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

} // namespace

TEST_F(AppMenuTest, EachFeatureTellsOfItselfInAnAlert) {
    const auto rows = delegate->makeMenu()->itemArray()[4]->submenu()->itemArray();
    ASSERT_GT(rows.size(), Locked::all.size());
    for (size_t i = 0; i < Locked::all.size(); ++i) {
        const auto texts = alertOf([&] { rows[i]->action().send(*delegate, *rows[i]); }, "Not Now");
        EXPECT_EQ(texts, (std::vector<std::string>{rows[i]->title() + " is part of Nimbrel SUMMIT",
                                                   Locked::all[i].detail, "Get Nimbrel SUMMIT…",
                                                   "Not Now", "See Everything in SUMMIT"}));
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

TEST_F(AppMenuTest, ASessionThatCannotBeCoveredSaysWhyInOneAlert) {
    screens().isCoverable = false;
    const auto texts = alertOf(
        [] {
            Cover::shared()->show();
            Cover::shared()->show();
            EXPECT_FALSE(QApplication::activeModalWidget()) << "a click does not wait for it";
            QCoreApplication::processEvents();
        },
        "OK");
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts[0], "A Wayland session cannot be covered");
    EXPECT_FALSE(Cover::shared()->shown() || QApplication::activeModalWidget());
}

TEST_F(AppMenuTest, AnAlertKeepsInputFromTheOtherWindows) {
    NSApp->orderFrontStandardAboutPanelWithOptions({});
    const auto windows = QApplication::topLevelWidgets();
    const auto about = std::ranges::find_if(windows, [](const QWidget* window) {
        return window->isVisible() && window->windowTitle().startsWith("About");
    });
    ASSERT_NE(about, windows.end());
    const auto isOpenAfterItsButton = [&] {
        QCloseEvent close;
        QApplication::sendEvent((*about)->windowHandle(), &close);
        return (*about)->isVisible();
    };
    QTimer::singleShot(0, [&] {
        EXPECT_TRUE(isOpenAfterItsButton());
        NSApp->stopModalWithCode(NSAlertFirstButtonReturn);
    });
    NSAlert().runModal();
    EXPECT_FALSE(isOpenAfterItsButton());
}

TEST_F(AppMenuTest, AnItemThatStandsForNoFeatureDoesNothing) {
    for (const std::any& object : {std::any(), std::any(7), std::any(std::string("")),
                                   std::any(std::string("Fade in/out"))}) {
        NSMenuItem item("", nullptr, "");
        item.setRepresentedObject(object);
        EXPECT_TRUE(alertOf([&] { delegate->lockedClicked(item); }, "Not Now").empty());
    }
}
