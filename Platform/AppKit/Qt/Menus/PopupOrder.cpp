#include "AppKit/Qt/Application/Launch.h"
#include "WindowServer/Session.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <map>

using WindowServer::Session;

namespace {

constexpr int aboveAll = 2000;

class PopupOrder : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void raise(const QWidget& popup);
    void drop(const QObject* popup);

    std::map<const QObject*, WId> m_raised; ///< Windows of popups that are shown.
};

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

} // namespace

void keepPopupsInFront() { qApp->installEventFilter(new PopupOrder(qApp)); }
