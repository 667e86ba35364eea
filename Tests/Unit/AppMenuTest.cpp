#include "Screens.h"

#include "AppDelegate.h"
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

/// The first text of the alert that the action opens, which is answered by the button.
std::string alertOf(const std::function<void()>& action, const QString& answer) {
    std::string text;
    QTimer::singleShot(0, [&] {
        QWidget* const alert = QApplication::activeModalWidget();
        if (!alert) return;
        for (const QLabel* label : alert->findChildren<QLabel*>())
            if (text.empty()) text = label->text().toStdString();
        for (QPushButton* button : alert->findChildren<QPushButton*>())
            if (button->text() == answer) button->click();
    });
    action();
    QCoreApplication::processEvents();
    return text;
}

} // namespace

TEST(AppMenu, EachFeatureTellsOfItselfAndNothingElseOfAny) {
    const auto delegate = std::make_shared<AppDelegate>();
    auto rows = delegate->makeMenu()->itemArray()[4]->submenu()->itemArray();
    rows.resize(Locked::all.size());
    for (const auto& row : rows)
        EXPECT_EQ(alertOf([&] { row->action().send(*delegate, *row); }, "Not Now"),
                  row->title() + " is part of Nimbrel SUMMIT");
    for (const std::any& object : {std::any(), std::any(7), std::any(std::string("Fade in/out"))}) {
        rows[0]->setRepresentedObject(object);
        EXPECT_EQ(alertOf([&] { delegate->lockedClicked(*rows[0]); }, "Not Now"), "");
    }
}

TEST(AppMenu, APageWithoutAnAddressIsComing) {
    const auto alertFor = [](Links::Purpose what) {
        return alertOf([what] { Links::open(NSURL::URLWithString(""), what); }, "OK");
    };
    EXPECT_EQ(alertFor(Links::Purpose::upgrade), "Nimbrel SUMMIT is coming");
    EXPECT_EQ(alertFor(Links::Purpose::support), "Thank you for supporting VARDEK!");
}

TEST(AppMenu, AnAlertKeepsInputFromTheOtherWindows) {
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
    QTimer::singleShot(0, [&] { EXPECT_TRUE(isOpenAfterItsButton()); });
    EXPECT_NE(alertOf([] { Links::open(nullptr, Links::Purpose::support); }, "OK"), "");
    EXPECT_FALSE(isOpenAfterItsButton());
}
