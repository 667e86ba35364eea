#pragma once

#include "AppKit/NSWindow.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

class ViewContent;

/// The window of the toolkit's around what a controller shows. This one leaves its place and order
/// to the window manager.
class FrameWidget : public QWidget {
public:
    /// Of the kind that suits the window's level.
    static std::unique_ptr<FrameWidget> make(NSWindow& window,
                                             std::unique_ptr<ViewContent> content);

    /// To be called before it goes, so that what it shows outlives it.
    std::unique_ptr<ViewContent> takeContent();

    /// Puts the content at this place of the screen, in the toolkit's coordinates.
    void place(const QRect& content);

    /// The content with all that stands around it before the user's eyes.
    QRect around(const QRect& content) const;

    /// Comes on the screen, or to the front of it from wherever it was put away.
    virtual void enter();
    virtual void leave();
    virtual void takeKeyboard();
    void renew(); ///< Comes anew, where another program took its window.

    /// Undoes a leave that came of the program not being the active one.
    void comeBack();
    bool orderedAfter(const FrameWidget& other) const { return m_order > other.m_order; }

    /// Calls `onWrongForm` where a compositor that has come or gone makes another frame better.
    virtual void checkForm() {}
    std::function<void()> onWrongForm;

protected:
    /// What a frame has of its own around its content.
    struct Chrome {
        int titleBar = 0;
        int shadow = 0; ///< On each side.
    };
    FrameWidget(NSWindow& window, std::unique_ptr<ViewContent> content, const Chrome& chrome,
                Qt::WindowFlags flags);

    NSWindow& window() const { return m_window; }
    bool hasStyle(NSUInteger style) const { return m_window.styleMask() & style; }
    int shadow() const { return m_shadow; }

    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    bool isManaged() const;
    QRect keptOnScreen(QRect content) const;
    bool isPutAway() const;
    void followActivation();

    NSWindow& m_window;
    QPointer<ViewContent> m_content;
    const int m_shadow;
    const QMargins m_chrome;   ///< All of ours around the content, its toolbar included.
    unsigned m_order = 0;      ///< Counts up with each window that comes to the front.
    bool m_isEntering = false; ///< It has come in this turn of the event loop.
    QTimer m_settling;         ///< Since the program became active, or another one did.
    QPoint m_pointer;          ///< Where it was when that was last looked into.
    bool m_away = false;       ///< Not on the screen because the program is not the active one.
};
