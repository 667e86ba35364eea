#pragma once

#include "AppKit/Qt/Windows/Accessible.h"
#include "AppKit/Qt/Windows/NativeWindow.h"
#include "WindowServer/ToolkitWindows.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <memory>

/// A panel on the screen. The toolkit brings it input, tool tip and assistive technology; its
/// picture is what the content view draws. Under a compositor it is translucent, with a soft shadow
/// in a margin of its own. Without one it is opaque and has the shape of what is drawn, and where
/// the drawing is translucent it lies over an estimate of what is behind.
///
/// It comes on the screen once. As it leaves, and as a compositor comes or goes, the window gets
/// another one.
class PanelWindow : public QWidget,
                    public NativeWindow,
                    public Accessible,
                    public std::enable_shared_from_this<PanelWindow> {
public:
    /// One that its owner has dropped leaves, and lives until the event at hand is done.
    static std::shared_ptr<PanelWindow> make(NSWindow& window);

    /// A compositor has come or gone: every panel takes on the form that suits.
    static void compositingChanged();
    /// The last open menu of the program's has closed.
    static void menuClosed();

    NSInteger number() const override;
    void setTitle(const std::string& title) override;
    void setFrame(const NSRect& frame) override;
    void setLevel(NSInteger level) override;
    void setIgnoresMouseEvents(bool ignores) override;
    void setAlpha(double alpha) override;
    void displayViews() override;
    void describeViews() override;
    void orderFront() override;
    void orderOut() override;

    QAccessible::Role accessibleRole() const override;
    Actions accessibleActions() override;

    /// Notes where the mouse is, before the toolkit rounds it to points.
    bool eventFilter(QObject* window, QEvent* event) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    using Handler = void (NSView::*)(const NSEvent&);

    explicit PanelWindow(NSWindow& window);

    template <class Work> static void forAllShown(Work work);
    NSView* view() const; ///< Null off the screen.
    void press();
    void checkForm();
    void comeAnew();
    void leave();
    QRect place() const;
    void draw(double scale);
    void setShapes(double scale);
    void lookBehind();
    QRegion hiddenByOurs() const;
    void send(Handler handler, NSEventType type, const QMouseEvent& event);
    void hover(bool hovered);
    void tellTrackers();
    void deliver(Handler handler, NSView& view, const NSEvent& event,
                 std::optional<NSPoint> location);

    NSWindow* m_window;                                  ///< Null once it has left.
    std::shared_ptr<WindowServer::ToolkitWindow> m_held; ///< While it is shown.
    bool m_isShown = false;
    bool m_translucent = false;
    int m_margin = 0;  ///< For the shadow, in points.
    QImage m_picture;  ///< Empty while it is to be drawn anew.
    QImage m_shadowed; ///< The same with its shadow, where it has one.
    QImage m_behind;   ///< Empty where nothing is known.
    QTimer m_look;
    double m_alpha = 1;
    QPointF m_mouse;
    bool m_pressed = false; ///< By the left button.
    bool m_hovered = false;
    bool m_toldHovered = false; ///< What the view knows of it.
    int m_delivering = 0;       ///< So many events are being handled, one within the other.
};
