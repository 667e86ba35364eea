#include "AppKit/Qt/Menus/PopupOrder.h"

#include "WindowServer/Session.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

using WindowServer::Session;

namespace {
constexpr int aboveAll = 2000;
}

PopupOrder::PopupOrder(QApplication& application) : QObject(&application) {
    application.installEventFilter(this);
}

bool PopupOrder::eventFilter(QObject* object, QEvent* event) {
    const bool shown = event->type() == QEvent::Show;
    if (!shown && event->type() != QEvent::Hide) return false;
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget) return false;
    const Qt::WindowType type = widget->windowType();
    if (type != Qt::Popup && type != Qt::ToolTip) return false;
    drop(widget);
    // A widget that is being shown may yet be given another native window. The call is dropped with
    // the widget where that dies first.
    if (shown)
        QMetaObject::invokeMethod(
            widget, [this, widget] { raise(*widget); }, Qt::QueuedConnection);
    return false;
}

void PopupOrder::raise(const QWidget& popup) {
    if (!popup.isVisible() || !popup.windowHandle()) return;
    const WId window = popup.windowHandle()->winId();
    m_raised[&popup] = window;
    connect(&popup, &QObject::destroyed, this, &PopupOrder::drop, Qt::UniqueConnection);
    Session::current().setName(window, popup.windowType() == Qt::Popup ? "menu" : "tip");
    Session::current().setLevel(window, aboveAll);
}

void PopupOrder::drop(const QObject* popup) {
    const auto raised = m_raised.extract(popup);
    if (raised) Session::current().dropLevel(raised.mapped());
}
