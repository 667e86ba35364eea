#include "Screens.h"

#include "AppKit/AppKit.h"
#include "AppKit/Qt/Panels/PanelWindow.h"

#include <QApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace {

/// Says what happens to it.
struct TestView : NSView {
    using NSView::NSView;
    void mouseDown(const NSEvent& event) override { note("down", event); }
    void mouseDragged(const NSEvent& event) override { note("dragged", event); }
    void mouseUp(const NSEvent& event) override { note("up", event); }
    void rightMouseDown(const NSEvent& event) override { note("right", event); }
    void mouseEntered(const NSEvent&) override { heard += "entered "; }
    void mouseExited(const NSEvent&) override { heard += "exited "; }
    bool acceptsFirstMouse(const std::optional<NSEvent>&) const override { return true; }
    void drawRect(const NSRect&) override {
        NSColor::colorWithSRGBRed(0, 0, 0, 1).setFill();
        NSBezierPath::bezierPathWithOvalInRect(bounds())->fill();
    }

    void note(const char* what, const NSEvent& event) {
        heard += what;
        if (event.modifierFlags() & NSEventModifierFlagControl) heard += "+control";
        heard += ' ';
        mouse = NSEvent::mouseLocation();
        if (act) act();
    }

    std::string heard;
    NSPoint mouse;
    std::function<void()> act;
};

class PanelTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        panel = std::make_unique<NSPanel>(CGRectMake(100, 200, 20, 20),
                                          NSWindowStyleMaskNonactivatingPanel,
                                          NSBackingStoreBuffered, false);
        panel->setTitle("A panel");
        panel->setContentView(view);
        view->addTrackingArea(std::make_shared<NSTrackingArea>(
            CGRectMake(0, 0, 0, 0), NSTrackingMouseEnteredAndExited, view.get(), nullptr));
        panel->orderFrontRegardless();
    }
    void TearDown() override {
        panel = nullptr;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ScreensTest::TearDown();
    }

    static QWidget* widget() {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (each->windowTitle() == "A panel" && each->isVisible()) return each;
        return nullptr;
    }

    static void send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons,
                     const QPointF& where = {}, Qt::KeyboardModifiers modifiers = {}) {
        QMouseEvent event(type, {}, where, button, buttons, modifiers);
        QApplication::sendEvent(widget()->windowHandle(), &event);
    }

    static void send(QEvent::Type type) {
        QEnterEvent enter({}, {}, {});
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(widget(), type == QEvent::Enter ? &enter : &leave);
    }

    std::shared_ptr<TestView> view = std::make_shared<TestView>(CGRectMake(0, 0, 20, 20));
    std::unique_ptr<NSPanel> panel;
};

} // namespace

TEST_F(PanelTest, BringsTheMouseToItsViewOnePressAfterTheOther) {
    send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, {10, 1000});
    EXPECT_EQ(view->mouse, (NSPoint{10, 80}));
    send(QEvent::MouseButtonPress, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    send(QEvent::MouseButtonRelease, Qt::RightButton, Qt::LeftButton);
    send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, {30.5, 900});
    EXPECT_EQ(view->mouse, (NSPoint{30.5, 180}));
    send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    send(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    send(QEvent::MouseButtonPress, Qt::RightButton, Qt::RightButton, {}, Qt::ControlModifier);
    send(QEvent::MouseButtonRelease, Qt::RightButton, Qt::NoButton);
    send(QEvent::MouseButtonPress, Qt::MiddleButton, Qt::MiddleButton);
    send(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::Enter);
    send(QEvent::Leave);
    send(QEvent::Enter);
    EXPECT_EQ(view->heard, "down dragged up right+control down entered exited entered ");
    view->heard.clear();
    const auto tellOfLoss = screens().held.at(widget()->winId())->onGone;
    tellOfLoss(); // Another one stands there now.
    send(QEvent::Enter);
    EXPECT_EQ(view->heard, "exited entered ");
}

TEST_F(PanelTest, LeavesTheMouseToAMenuUntilThatCloses) {
    const auto menu = std::make_shared<NSMenu>();
    menu->addItem(std::make_shared<NSMenuItem>("Item", nullptr, ""));
    view->act = [&] {
        QTimer::singleShot(0, [&] {
            send(QEvent::Leave);
            EXPECT_EQ(view->heard, "entered down ");
            QApplication::activePopupWidget()->close();
        });
        NSMenu::popUpContextMenu(menu, NSEvent(NSEventTypeLeftMouseDown, 0), *view);
        view->act = nullptr;
    };
    send(QEvent::Enter);
    send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(view->heard, "entered down exited ");
}

TEST_F(PanelTest, MayEndInTheMiddleOfItsOwnEvent) {
    const std::weak_ptr<TestView> weak = view;
    view->act = [this, keep = std::string(100, 'x')] {
        view = nullptr;
        panel = nullptr;
        EXPECT_EQ(keep.size(), 100u); // The view and what it does are still there.
    };
    send(QEvent::MouseButtonPress, Qt::RightButton, Qt::RightButton);
    EXPECT_TRUE(weak.expired());
    EXPECT_FALSE(widget());
    EXPECT_TRUE(screens().held.empty());
}
