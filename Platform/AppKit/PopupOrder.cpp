#include "AppKit/PopupOrder+Private.h"

#include "WindowServer/Session.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

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
    const auto* widget = qobject_cast<QWidget*>(object);
    if (!widget || !widget->internalWinId()) return false;
    const Qt::WindowType type = widget->windowType();
    if (type != Qt::Popup && type != Qt::ToolTip) return false;
    if (shown) {
        Session::current().setName(widget->winId(), type == Qt::Popup ? "menu" : "tip");
        Session::current().setLevel(widget->winId(), aboveAll);
    } else {
        Session::current().dropLevel(widget->winId());
    }
    return false;
}
