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

    virtual void enter(); ///< Comes on the screen, or to the front of it.
    virtual void leave();
    virtual void takeKeyboard();

    /// Undoes a leave that came of the program not being the active one.
    void comeBack();
    bool orderedAfter(const FrameWidget& other) const { return m_order > other.m_order; }

    /// Calls `onWrongForm` where a compositor that has come or gone makes another frame better.
    virtual void checkForm() {}
    std::function<void()> onWrongForm;

protected:
    FrameWidget(NSWindow& window, std::unique_ptr<ViewContent> content, const QMargins& chrome,
                Qt::WindowFlags flags);

    NSWindow& window() const { return m_window; }
    bool hasStyle(NSUInteger style) const { return m_window.styleMask() & style; }

    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    QRect keptOnScreen(QRect whole) const;
    void leaveIfInactive();

    NSWindow& m_window;
    QPointer<ViewContent> m_content;
    const QMargins m_chrome; ///< All of ours around the content, its toolbar included.
    unsigned m_order = 0;    ///< Counts up with each window that comes to the front.
    QTimer m_settling;       ///< Since the program became active, or another one did.
    bool m_away = false;     ///< Not on the screen because the program is not the active one.
};
