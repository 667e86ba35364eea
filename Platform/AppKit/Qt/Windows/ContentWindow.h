#pragma once

#include "AppKit/Qt/Windows/Accessible.h"
#include "AppKit/Qt/Windows/NativeWindow.h"
#include "WindowServer/Session.h"

#include <QTimer>
#include <QWidget>

class ViewContent;

/// A window that shows what a view controller makes, and leaves its place and order to the window
/// manager. What it shows is made when it is first centred or comes on the screen, and kept, with
/// all that the user did to it, until the window goes.
class ContentWindow : public QWidget, public NativeWindow, public Accessible {
public:
    explicit ContentWindow(NSWindow& window);
    ~ContentWindow() override;

    /// Windows that left for another program come back, and the frontmost takes the keyboard.
    static void activate();

    /// From level 1000 on window managers have no say.
    static bool floats(const NSWindow& window) {
        return window.level() >= NSScreenSaverWindowLevel;
    }

    NSInteger number() const override;
    void describe() override;
    void setFrame(const NSRect& frame) override;
    void setLevel(NSInteger level) override;
    void center() override;
    void makeKey() override;
    void orderFront() override;
    void orderOut() override;

    void takeKeyboard();

    /// A window without a title is an alert.
    QAccessible::Role accessibleRole() const override {
        return windowTitle().isEmpty() ? QAccessible::AlertMessage : QAccessible::Window;
    }

protected:
    virtual void dress(); ///< Before it is first seen.

    bool hasStyle(NSUInteger style) const { return m_window.styleMask() & style; }

    bool eventFilter(QObject* native, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

    NSWindow& m_window;
    std::shared_ptr<WindowServer::ToolkitWindow> m_held; ///< While on the screen.
    int m_bars = 0;   ///< The height of its own title bar and its toolbar.
    int m_shadow = 0; ///< Its width on each side.

private:
    void load();
    void place(const QRect& content);
    QRect around(const QRect& content) const;
    QRect keptOnScreen(QRect content) const;
    bool isManaged() const;
    bool isPutAway() const;
    void comeBack();
    void followActivation();

    ViewContent* m_content = nullptr;
    unsigned m_order = 0;      ///< Counts up with each window that comes to the front.
    bool m_isEntering = false; ///< It has come in this turn of the event loop.
    QTimer m_settling;         ///< Since the program became active, or another one did.
    QPoint m_pointer;          ///< Where it was when that was last looked into.
    bool m_away = false;       ///< Not on the screen because the program is not the active one.
};
