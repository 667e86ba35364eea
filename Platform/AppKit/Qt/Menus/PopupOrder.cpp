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
        auto* const popup = qobject_cast<QWidget*>(object);
        if (!popup || (popup->windowType() != Qt::Popup && popup->windowType() != Qt::ToolTip))
            return false;
        if (event->type() == QEvent::Hide) drop(popup);
        // A widget that is being shown may yet be given another native window. The call is dropped
        // with the widget where that dies first.
        if (event->type() == QEvent::Show)
            QMetaObject::invokeMethod(
                popup, [this, popup] { raise(*popup); }, Qt::QueuedConnection);
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
