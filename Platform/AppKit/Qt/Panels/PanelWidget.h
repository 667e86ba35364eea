#pragma once

#include "AppKit/NSWindow.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

/// A panel on the screen. The toolkit brings it input, tool tip and assistive technology; its
/// picture is what the content view draws. Under a compositor it is translucent, with a soft shadow
/// in a margin of its own. Without one it is opaque and has the shape of what is drawn, and where
/// the drawing is translucent it lies over an estimate of what is behind.
class PanelWidget : public QWidget, public std::enable_shared_from_this<PanelWidget> {
public:
    /// For the compositor that there is, or for none. An object that its owner has dropped lives
    /// until the event at hand is done.
    static std::shared_ptr<PanelWidget> make(NSWindow& window);

    void enter(); ///< Stands on the screen.
    void leave(); ///< Leaves it for good, and has no window any more.

    /// Called where the widget does not suit the compositor that there is, or the lack of one.
    std::function<void()> onWrongForm;
    /// Called where another program took its window off the screen.
    std::function<void()> onWindowGone;
    /// Calls it if that is so, at once or at the end of a press that is under way.
    void checkForm();
    /// A menu that had the mouse to itself has closed: the end of a press went to it, and so may
    /// the pointer have gone.
    void menuClosed();
    /// Another one takes its place, and will hear for itself whether the pointer is there.
    void forgetPointer();

    // The window has changed.
    void updateFrame();
    void updateLevel();
    void updateAlpha();
    void updatePicture();
    void updateTexts();

    /// Null once it has left. For assistive technology, as is `press`.
    NSView* view() const;
    void press();

    /// Notes where the mouse is, before the toolkit rounds it to points.
    bool eventFilter(QObject* window, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    using Handler = void (NSView::*)(const NSEvent&);

    explicit PanelWidget(NSWindow& window);

    QRect place() const; ///< With the shadow.
    void draw();
    void setShapes();
    void lookBehind();
    void send(Handler handler, NSEventType type, const QMouseEvent& event);
    void hover(bool hovered);
    void tellTrackers();
    void setTip(const QString& tip);
    QRegion hiddenByOurs() const;
    void deliver(Handler handler, NSView& view, const NSEvent& event,
                 std::optional<NSPoint> location);

    NSWindow* m_window;
    const bool m_translucent;
    const int m_margin; ///< For the shadow, in points.
    QImage m_picture;   ///< Empty while it is to be drawn anew.
    QImage m_shadowed;  ///< The same with its shadow, where it has one.
    QImage m_behind;    ///< Empty where nothing is known.
    QTimer m_look;
    double m_alpha = 1;
    QPointF m_mouse;
    bool m_pressed = false; ///< By the left button.
    bool m_hovered = false;
    bool m_toldHovered = false; ///< What the view knows of it.
    int m_delivering = 0;       ///< So many events are being handled, one within the other.
};
