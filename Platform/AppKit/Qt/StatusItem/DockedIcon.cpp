#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/StatusItem/TrayIcon.h"
#include "AppKit/Qt/Windows/Accessible.h"
#include "WindowServer/Session.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <numeric>

using WindowServer::Session;
using WindowServer::Snapshot;

namespace {

/// Black or white, whichever stands out more from the ground.
QColor inkOn(const Snapshot& ground) {
    const auto light = [](int sum, uint32_t pixel) { return sum + qGray(pixel); };
    const int sum = std::accumulate(ground.pixels.begin(), ground.pixels.end(), 0, light);
    return sum / static_cast<int>(ground.pixels.size()) > 127 ? Qt::black : Qt::white;
}

class DockedIcon : public QWidget, public TrayItem, public Accessible {
public:
    explicit DockedIcon(NSStatusBarButton& button)
        : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint),
          TrayItem(button), m_look(Session::current().tray().look()),
          m_ink(m_look.ink ? QColor(*m_look.ink) : palette().color(QPalette::WindowText)) {
        setAttribute(Qt::WA_TranslucentBackground, m_look.translucent);
        setAttribute(Qt::WA_AlwaysShowToolTips);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setWindowTitle(QCoreApplication::applicationName());
        constexpr int usualSide = 22;
        setMinimumSize(usualSide, usualSide); // Trays keep to it, and give more.
        resize(minimumSize());
        refresh();
        move(-2 * usualSide, -2 * usualSide); // Out of sight, until the tray has it.
        show();
        Session::current().tray().dock(winId(), [self = QPointer(this)] {
            if (self) self->lookBeneath();
        });
    }

    void refresh() override {
        setToolTip(QString::fromStdString(m_button.toolTip()));
        setAccessibleName(description());
        update();
    }

    QRect place() const override { return {m_corner, size()}; }
    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    Actions accessibleActions() override {
        return {
            {QAccessibleActionInterface::pressAction(), [this] { click(NSEventTypeLeftMouseUp); }},
            {QAccessibleActionInterface::showMenuAction(),
             [this] { click(NSEventTypeRightMouseUp); }}};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const auto& [area, pixels] = m_ground;
        if (!pixels.empty())
            painter.drawImage(rect(), QImage(reinterpret_cast<const uchar*>(pixels.data()),
                                             area.width, area.height, QImage::Format_RGB32));
        const double scale = devicePixelRatioF();
        const QSize whole = (QSizeF(size()) * scale).toSize();
        QImage picture = pictureOf(image(), std::min(whole.width(), whole.height()), m_ink);
        picture.setDevicePixelRatio(scale);
        const QSize rest = (whole - picture.size()) / 2; // In whole pixels, which keeps it sharp.
        painter.drawImage(QPointF(rest.width(), rest.height()) / scale, picture);
    }

    void resizeEvent(QResizeEvent*) override { lookBeneath(); }

    void moveEvent(QMoveEvent*) override {
        m_corner = pos();
        lookBeneath();
    }

    // The press that closes the icon's menu, as one anywhere else would, is no click.
    void mousePressEvent(QMouseEvent* event) override {
        m_pressed = m_button.isMenuOpen() ? Qt::NoButton : event->button();
        m_corner = (event->globalPosition() - event->position()).toPoint();
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        const bool isClick =
            event->button() == m_pressed && rect().contains(event->position().toPoint());
        m_pressed = Qt::NoButton;
        if (!isClick) return;
        if (event->button() == Qt::LeftButton) click(NSEventTypeLeftMouseUp, event->modifiers());
        if (event->button() == Qt::RightButton) click(NSEventTypeRightMouseUp, event->modifiers());
    }

private:
    void lookBeneath() {
        if (!isVisible()) return; // On its way to the tray.
        const Snapshot ground = m_look.translucent
                                    ? Session::current().windows().hold(winId())->grabAround(1)
                                    : Session::current().tray().groundOfDocked();
        if (!m_look.translucent) m_ground = ground;
        if (!m_look.ink && !ground.pixels.empty()) m_ink = inkOn(ground);
        update();
    }

    const WindowServer::TrayLook m_look;
    Snapshot m_ground; ///< Empty where the tray's shows through, or is not known.
    QColor m_ink;
    Qt::MouseButton m_pressed = Qt::NoButton;
    QPoint m_corner; ///< On the screen. The tray may move it without telling.
};

} // namespace

std::unique_ptr<TrayItem> dockedIcon(NSStatusBarButton& button) {
    return std::make_unique<DockedIcon>(button);
}
