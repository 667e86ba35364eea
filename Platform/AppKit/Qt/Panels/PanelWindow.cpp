#include "AppKit/NSApplication.h"
#include "AppKit/Qt/Menus/MenuPopup.h"
#include "AppKit/Qt/Panels/PanelPicture.h"
#include "AppKit/Qt/Windows/Accessible.h"
#include "AppKit/Qt/Windows/Coordinates.h"
#include "AppKit/Qt/Windows/NativeWindow.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QTimer>
#include <QToolTip>
#include <QWindow>

#include <cmath>

using WindowServer::Session;
using WindowServer::ToolkitWindow;

namespace {

/// So long the windows behind may take to redraw what has come to light.
constexpr int lookAfterMilliseconds = 60;

/// A panel on the screen. The toolkit brings it input, tool tip and assistive technology; its
/// picture is what the content view draws. Under a compositor it is translucent, with a soft shadow
/// in a margin of its own. Without one it is opaque and has the shape of what is drawn, and where
/// the drawing is translucent it lies over an estimate of what is behind. It comes on the screen
/// once: as it leaves, and as a compositor comes or goes, the window gets another one.
class PanelWindow : public QWidget,
                    public NativeWindow,
                    public Accessible,
                    public std::enable_shared_from_this<PanelWindow> {
public:
    explicit PanelWindow(NSWindow& window)
        : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                               Qt::WindowDoesNotAcceptFocus),
          m_window(&window) {
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_AlwaysShowToolTips);
        m_look.setSingleShot(true);
        m_look.setInterval(lookAfterMilliseconds);
        connect(&m_look, &QTimer::timeout, this, [this] { lookBehind(); });
    }

    /// Its owner has dropped it.
    static void drop(PanelWindow* panel) {
        if (panel->m_held) panel->leave();
        panel->deleteLater();
    }

    /// A press that is under way is waited for.
    void checkForm() override {
        if (m_held && !m_pressed && m_translucent != Session::current().windows().areComposited())
            comeAnew();
    }

    /// The release of a press went to the menu, and the pointer may have left meanwhile.
    void menuClosed() override {
        if (!m_held) return;
        m_pressed = false;
        m_look.start(); // The menu may have hidden what lies behind.
        tellTrackers();
        checkForm();
    }

    NSInteger number() const override { return m_held ? static_cast<NSInteger>(winId()) : 0; }

    /// Past the toolkit, which takes another program's move for the user's, and then drops its own
    /// move to the place where it believes the window to be.
    void setFrame(const NSRect&) override {
        if (!m_held) return;
        if (!m_held->place(frameOf(place()))) setGeometry(place());
        if (!m_look.isActive()) m_look.start();
    }

    void setAlpha(double alpha) override {
        const double before = std::exchange(m_alpha, alpha);
        if (before == 1) lookBehind(); // Now it is seen through the panel.
        update();
    }

    void displayViews() override {
        if (!m_held) return;
        m_picture = {};
        m_look.start();
        update();
    }

    void describe() override {
        if (!m_held) return;
        setWindowTitle(QString::fromStdString(m_window->title()));
        if (!view()) return;
        // A tool tip that is on the screen changes with it.
        const bool shown = m_hovered && QToolTip::isVisible() && QToolTip::text() == toolTip();
        setToolTip(QString::fromStdString(view()->toolTip()));
        if (shown) QToolTip::showText(m_mouse.toPoint(), toolTip(), this);
        setAccessibleName(QString::fromStdString(view()->accessibilityLabel()));
    }

    void orderFront() override {
        if (m_held) return;
        m_translucent = Session::current().windows().areComposited();
        m_alpha = m_window->alphaValue();
        setAttribute(m_translucent ? Qt::WA_TranslucentBackground : Qt::WA_OpaquePaintEvent);
        create();
        m_held = Session::current().windows().hold(winId());
        windowHandle()->installEventFilter(this);
        describe();
        setGeometry(place());
        setFrame(m_window->frame());
        const auto* const display = Session::current().displays().at(m_window->frame());
        m_held->setName(m_window->identifier() + ':' + (display ? display->name : ""));
        m_held->onGone = [this] { comeAnew(); };
        m_held->setShadowMargin(static_cast<int>(std::lround(margin() * devicePixelRatioF())));
        m_held->setLevel(static_cast<int>(m_window->level()));
        draw(devicePixelRatioF());
        lookBehind();
        show();
        m_look.start();
    }

    void orderOut() override {
        if (!m_held) return;
        giveWay();
        // A drag's moves that are still to come would make the toolkit take it for the pressed one.
        if (!m_delivers) destroy();
    }

    QAccessible::Role accessibleRole() const override {
        const bool isButton = view() && view()->accessibilityRole() == NSAccessibilityButtonRole;
        return isButton ? QAccessible::Button : QAccessible::Client;
    }

    Actions accessibleActions() override {
        if (accessibleRole() != QAccessible::Button) return {};
        return {{QAccessibleActionInterface::pressAction(), [this] { press(); }}};
    }

    /// Notes where the mouse is, before the toolkit rounds it to points.
    bool eventFilter(QObject* window, QEvent* event) override {
        if (const auto* mouse = dynamic_cast<const QMouseEvent*>(event))
            m_mouse = mouse->globalPosition();
        return QWidget::eventFilter(window, event);
    }

protected:
    /// Nobody else puts it away: a message that asks for that may come from any program.
    void closeEvent(QCloseEvent* event) override { event->ignore(); }

    void paintEvent(QPaintEvent*) override {
        if (!m_held) return;
        QPainter painter(this);
        const double scale = scaleOf(painter);
        if (m_picture.isNull() || m_picture.devicePixelRatio() != scale) draw(scale);
        if (!m_translucent) {
            painter.fillRect(rect(), Qt::black);
            m_behind.setDevicePixelRatio(scale);
            painter.drawImage(0, 0, m_behind);
        }
        painter.setOpacity(m_alpha);
        painter.drawImage(0, 0, m_picture);
    }

    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) {
            m_pressed = true;
            send(&NSView::mouseDown, NSEventTypeLeftMouseDown, *event);
        } else if (event->button() == Qt::RightButton && !m_pressed) {
            // During a drag its menu would take the release, and the drag would never end.
            send(&NSView::rightMouseDown, NSEventTypeRightMouseDown, *event);
        }
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (m_pressed) send(&NSView::mouseDragged, NSEventTypeLeftMouseDragged, *event);
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton || !std::exchange(m_pressed, false)) return;
        send(&NSView::mouseUp, NSEventTypeLeftMouseUp, *event);
        checkForm();
    }

    void enterEvent(QEnterEvent*) override { hover(true); }
    void leaveEvent(QEvent*) override { hover(false); }

private:
    using Handler = void (NSView::*)(const NSEvent&);

    /// Null off the screen.
    NSView* view() const { return m_held ? m_window->contentView().get() : nullptr; }

    void press() {
        if (!view()) return;
        const NSPoint middle = {CGRectGetMidX(m_window->frame()), CGRectGetMidY(m_window->frame())};
        deliver(&NSView::mouseDown, *view(), eventOf(NSEventTypeLeftMouseDown, {}, middle));
        if (view()) deliver(&NSView::mouseUp, *view(), eventOf(NSEventTypeLeftMouseUp, {}, middle));
    }

    /// The new one hears for itself whether the pointer is there.
    void comeAnew() {
        m_hovered = false;
        tellTrackers();
        if (m_held) giveWay().orderFront();
    }

    /// Leaves for good. What comes next on the screen for the window is another one.
    NativeWindow& giveWay() {
        NSWindow& window = *m_window;
        leave();
        return renew(window);
    }

    void leave() {
        m_held.reset();
        m_window = nullptr;
        m_look.stop();
        hide();
    }

    /// For the shadow, in points.
    int margin() const { return m_translucent ? softShadowMargin : 0; }

    /// With the shadow. The toolkit knows whole points alone.
    QRect place() const { return rectOf(CGRectInset(m_window->frame(), -margin(), -margin())); }

    /// What the drawing leaves clear neither hides anything nor takes input.
    void draw(double scale) {
        m_picture = {};
        if (view()) m_picture = pictureOf(*view(), m_window->frame().size, margin(), scale);
        const auto ink = inkOf(m_picture);
        if (!m_translucent) m_held->setShape(ToolkitWindow::Region::Bounding, ink);
        m_held->setShape(ToolkitWindow::Region::Input, ink);
        if (m_translucent) m_picture = withShadow(m_picture, scale);
        m_picture.setDevicePixelRatio(scale);
    }

    /// Looks once: what changes later behind a panel that rests does not show through.
    void lookBehind() {
        if (m_translucent || !m_held) return;
        if (m_picture.isNull()) draw(devicePixelRatioF());
        constexpr int rim = 2;
        const QImage behind = estimateBehind(m_picture, m_held->grabAround(rim), hiddenByOurs());
        if (behind.isNull()) return;
        m_behind = behind;
        update();
    }

    /// What other windows of the program hide of the surroundings, in pixels.
    QRegion hiddenByOurs() const {
        QRegion hidden;
        for (const QWidget* each : QApplication::topLevelWidgets()) {
            const bool isAbove = each->windowType() == Qt::Popup ||
                                 each->windowType() == Qt::ToolTip ||
                                 each->windowFlags() & Qt::BypassWindowManagerHint;
            if (each == this || !each->isVisible() || !isAbove) continue;
            const QRectF place = each->geometry().translated(-pos());
            const double scale = devicePixelRatioF();
            hidden += QRectF(place.topLeft() * scale, place.size() * scale).toAlignedRect();
        }
        return hidden;
    }

    void send(Handler handler, NSEventType type, const QMouseEvent& event) {
        if (!view()) return;
        const NSEvent translated = eventOf(type, event.modifiers(), pointFrom(m_mouse));
        const bool first = QGuiApplication::applicationState() != Qt::ApplicationActive;
        if (first && !view()->acceptsFirstMouse(translated)) return;
        deliver(handler, *view(), translated);
    }

    /// The view is not told while a menu is open: the pointer is the menu's then.
    void hover(bool hovered) {
        m_hovered = hovered;
        if (!isAnyMenuOpen()) tellTrackers();
    }

    void tellTrackers() {
        if (!view()) return;
        if (std::exchange(m_toldHovered, m_hovered) == m_hovered) return;
        const Handler handler = m_hovered ? &NSView::mouseEntered : &NSView::mouseExited;
        const auto type = m_hovered ? NSEventTypeMouseEntered : NSEventTypeMouseExited;
        const NSEvent event = eventOf(type, QGuiApplication::queryKeyboardModifiers());
        for (const auto& area : std::vector(view()->trackingAreas()))
            deliver(handler, *area->owner(), event);
    }

    /// The handler may end the window, and open a menu that runs the event loop meanwhile.
    void deliver(Handler handler, NSView& view, const NSEvent& event) {
        const QScopedValueRollback delivers(m_delivers, true);
        const auto self = shared_from_this();
        const auto content = m_window->contentView();
        NSApp->handle(event, [&] { (view.*handler)(event); });
    }

    NSWindow* m_window;                                  ///< Null once it has left.
    std::shared_ptr<WindowServer::ToolkitWindow> m_held; ///< While it is shown.
    bool m_translucent = false;
    QImage m_picture; ///< Empty while it is to be drawn anew.
    QImage m_behind;  ///< Empty where nothing is known.
    QTimer m_look;
    double m_alpha = 1;
    QPointF m_mouse;
    bool m_pressed = false; ///< By the left button.
    bool m_delivers = false;
    bool m_hovered = false;
    bool m_toldHovered = false; ///< What the view knows of it.
};

} // namespace

std::shared_ptr<NativeWindow> makePanelWindow(NSWindow& window) {
    return {new PanelWindow(window), &PanelWindow::drop};
}
