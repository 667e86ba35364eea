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

    bool eventFilter(QObject* object, QEvent* event) override {
        const bool shown = event->type() == QEvent::Show;
        if (!shown && event->type() != QEvent::Hide) return false;
        auto* widget = qobject_cast<QWidget*>(object);
        if (!widget) return false;
        const Qt::WindowType type = widget->windowType();
        if (type != Qt::Popup && type != Qt::ToolTip) return false;
        drop(widget);
        // A widget that is being shown may yet be given another native window. The call is dropped
        // with the widget where that dies first.
        if (shown)
            QMetaObject::invokeMethod(
                widget, [this, widget] { raise(*widget); }, Qt::QueuedConnection);
        return false;
    }

private:
    void raise(const QWidget& popup) {
        if (!popup.isVisible() || !popup.windowHandle()) return;
        const auto window = Session::current().windows().hold(popup.windowHandle()->winId());
        m_raised[&popup] = window;
        connect(&popup, &QObject::destroyed, this, &PopupOrder::drop, Qt::UniqueConnection);
        window->setName(popup.windowType() == Qt::Popup ? "menu" : "tip");
        window->setLevel(aboveAll);
    }
    void drop(const QObject* popup) { m_raised.erase(popup); }

    /// The windows of popups that are shown.
    std::map<const QObject*, std::shared_ptr<WindowServer::ToolkitWindow>> m_raised;
};

} // namespace

void keepPopupsInFront() { qApp->installEventFilter(new PopupOrder(qApp)); }
