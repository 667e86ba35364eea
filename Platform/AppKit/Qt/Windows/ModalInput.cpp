#include "AppKit/Qt/Application/Launch.h"
#include "AppKit/Qt/Windows/ContentWindow.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>

#include <algorithm>

namespace {

ContentWindow* frameOf(const QWindow& window) {
    return dynamic_cast<ContentWindow*>(QWidget::find(window.winId()));
}

constexpr QEvent::Type inputs[] = {
    QEvent::MouseButtonPress,
    QEvent::MouseButtonRelease,
    QEvent::MouseButtonDblClick,
    QEvent::MouseMove,
    QEvent::Wheel,
    QEvent::TouchBegin,
    QEvent::TouchUpdate,
    QEvent::TouchEnd,
    QEvent::KeyPress,
    QEvent::KeyRelease,
    QEvent::ShortcutOverride,
    QEvent::Close,
};

class ModalInput : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* const modal = QGuiApplication::modalWindow();
        if (!modal || object == modal || !object->isWindowType()) return false;
        const bool input = std::ranges::count(inputs, event->type()) > 0;
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
