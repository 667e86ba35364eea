#include "AppKit/Qt/Application/Launch.h"
#include "AppKit/Qt/Windows/ContentWindow.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>

namespace {

ContentWindow* frameOf(const QWindow& window) {
    return dynamic_cast<ContentWindow*>(QWidget::find(window.winId()));
}

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

class ModalInput : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* const modal = QGuiApplication::modalWindow();
        if (!modal || object == modal || !object->isWindowType()) return false;
        const bool input = isInput(event->type());
        const bool wakes =
            event->type() == QEvent::FocusIn || event->type() == QEvent::MouseButtonPress;
        if ((!input && !wakes) || !frameOf(static_cast<const QWindow&>(*object))) return false;
        auto* const front = frameOf(*modal);
        if (wakes && front)
            QMetaObject::invokeMethod(
                front, [front] { front->takeKeyboard(); }, Qt::QueuedConnection);
        if (input) event->ignore();
        return input;
    }
};

} // namespace

void keepInputForModalWindows() { qApp->installEventFilter(new ModalInput(qApp)); }
