#include "AppKit/Qt/Menus/MenuPopup.h"

#include "AppKit/Qt/Application/Launch.h"
#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/Panels/PanelPicture.h"
#include "AppKit/Qt/Windows/Coordinates.h"
#include "AppKit/Qt/Windows/NativeWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScreen>
#include <QStyleOptionMenuItem>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cmath>

using WindowServer::Session;
using WindowServer::ToolkitWindow;

namespace {

using Item = std::shared_ptr<NSMenuItem>;

/// Null for a separator.
Item itemOf(const QAction& row) { return row.data().value<Item>(); }

QString keysText(bool control, bool option, bool command, const QString& key) {
    return QString(control ? "⌃" : "") + (option ? "⌥" : "") + (command ? "⌘" : "") + key;
}

/// The keys that stand for the row's item, as they are shown in it: "⌃⌥⌘N". Empty where it has
/// none.
QString keyEquivalentOf(const QAction& row) {
    const Item item = itemOf(row);
    if (!item || item->keyEquivalent().empty()) return {};
    const NSUInteger held = item->keyEquivalentModifierMask();
    return keysText(held & NSEventModifierFlagControl, held & NSEventModifierFlagOption,
                    held & NSEventModifierFlagCommand,
                    QString::fromStdString(item->keyEquivalent()).toUpper());
}

/// Those of a press. Command is the Super key, and Option is Alt.
QString keysOf(const QKeyEvent& press) {
    const Qt::KeyboardModifiers held = press.modifiers();
    return keysText(held & Qt::ControlModifier, held & Qt::AltModifier, held & Qt::MetaModifier,
                    QKeySequence(press.key()).toString());
}

bool isModifier(int key) {
    return (key >= Qt::Key_Shift && key <= Qt::Key_Alt) || key == Qt::Key_AltGr ||
           key == Qt::Key_Super_L || key == Qt::Key_Super_R;
}

/// With its submenus, which answer as one.
class NativeMenu : public QMenu {
public:
    NativeMenu(const NSMenu& shown, QWidget* parent)
        : QMenu(parent), menu(shown), m_translucent(Session::current().windows().areComposited()) {
        setWindowFlag(Qt::NoDropShadowWindowHint);
        setAttribute(Qt::WA_TranslucentBackground, m_translucent);
        setTitle(QString::fromStdString(menu.title()));
        for (const Item& item : menu.itemArray())
            if (item->isSeparatorItem())
                addSeparator();
            else
                add(item);
    }

    const NSMenu& menu;

protected:
    // The keys stand in the row, but not in the item's name, which is read out.
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* row) const override {
        QMenu::initStyleOption(option, row);
        if (const QString keys = keyEquivalentOf(*row); !keys.isEmpty())
            option->text += '\t' + keys;
    }

    // The whole menu answers to the keys of its items, whichever submenu is open.
    void keyPressEvent(QKeyEvent* event) override {
        if (isModifier(event->key())) return; // The first key of a chord closes no menu.
        QWidget* whole = this;
        while (whole->parentWidget())
            whole = whole->parentWidget();
        const auto rows = whole->findChildren<QAction*>();
        const QString keys = keysOf(*event); // Empty for a key that the toolkit does not know.
        const auto found =
            std::ranges::find(rows, keys, [](QAction* row) { return keyEquivalentOf(*row); });
        if (keys.isEmpty() || found == rows.end()) return QMenu::keyPressEvent(event);
        if (!(*found)->isEnabled()) return;
        (*found)->trigger();
        whole->close();
    }

    bool event(QEvent* event) override {
        if (event->type() == QEvent::Show) keepOnScreen();
        const bool handled = QMenu::event(event);
        const bool reshaped = event->type() == QEvent::Show || event->type() == QEvent::Resize ||
                              event->type() == QEvent::WinIdChange;
        if (reshaped && !m_translucent && internalWinId()) cutCorners();
        if (event->type() == QEvent::Hide) m_held.reset();
        return handled;
    }

private:
    void add(const Item& item) {
        auto* const row = addAction(QString::fromStdString(item->title()).replace('&', "&&"));
        row->setData(QVariant::fromValue(item));
        row->setEnabled(item->isEnabled());
        if (item->image()) row->setIcon(inkIconFrom(*item->image()));
        if (item->submenu()) row->setMenu(new NativeMenu(*item->submenu(), this));
    }

    // Where a point is no whole number of pixels, place and size are both rounded, and a menu at
    // the screen's edge would reach beyond it.
    void keepOnScreen() {
        const double scale = devicePixelRatioF();
        const auto* const on = QGuiApplication::screenAt(geometry().center());
        if (scale == std::floor(scale) || !on) return;
        const QRect room = on->geometry();
        move(std::min(x(), room.right() - width()), std::min(y(), room.bottom() - height()));
    }

    void cutCorners() {
        const double scale = devicePixelRatioF();
        QImage shape((QSizeF(size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
        shape.fill(Qt::transparent);
        QPainter painter(&shape);
        painter.setBrush(Qt::black);
        painter.setPen(Qt::NoPen);
        const double radius = menuRadius * scale;
        painter.drawRoundedRect(shape.rect(), radius, radius);
        painter.end();
        m_held = Session::current().windows().hold(internalWinId());
        m_held->setShape(ToolkitWindow::Region::Bounding, inkOf(shape));
    }

    const bool m_translucent;
    std::shared_ptr<ToolkitWindow> m_held; ///< While its corners are cut.
};

/// Puts popups and tool tips above all other windows while they are shown.
class PopupOrder : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override {
        auto* const popup = qobject_cast<QWidget*>(object);
        if (!popup || (popup->windowType() != Qt::Popup && popup->windowType() != Qt::ToolTip))
            return false;
        if (event->type() == QEvent::Hide) popup->setProperty(held, {});
        // A widget that is being shown may yet be given another native window. The call is dropped
        // with the widget where that dies first.
        if (event->type() == QEvent::Show)
            QMetaObject::invokeMethod(
                popup, [popup] { raise(*popup); }, Qt::QueuedConnection);
        return false;
    }

private:
    static constexpr const char* held = "held"; ///< Its window, while that is in front.

    static void raise(QWidget& popup) {
        if (!popup.isVisible() || !popup.windowHandle()) return;
        constexpr int aboveAll = 2000;
        const auto window = Session::current().windows().hold(popup.windowHandle()->winId());
        window->setName(popup.windowType() == Qt::Popup ? "menu" : "tip");
        window->setLevel(aboveAll);
        popup.setProperty(held, QVariant::fromValue(window));
    }
};

NativeMenu* theOpen = nullptr;

/// Below the place, or above where the screen has no room below; always within the screen's sides.
QPoint cornerBeside(const QRect& place, const QSize& size) {
    const auto* screen = QGuiApplication::screenAt(place.center());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return place.bottomLeft();
    const QRect room = screen->geometry();
    const int below = place.y() + place.height();
    const bool fits = below + size.height() <= room.y() + room.height();
    const int y = fits ? below : place.y() - size.height();
    return {std::max(std::min(place.x(), room.x() + room.width() - size.width()), room.x()),
            std::max(y, room.y())};
}

/// Tries until the menu has the mouse and the keyboard: whoever opened it by a press may hold them
/// until the release.
void takeInput(QMenu& menu) {
    auto* const retry = new QTimer(&menu);
    QObject::connect(retry, &QTimer::timeout, &menu, [&menu, retry] {
        auto* const window = menu.windowHandle();
        if (menu.testAttribute(Qt::WA_DontShowOnScreen)) return retry->stop(); // It is given them.
        if (!window || !menu.isVisible()) return;
        const bool taken =
            window->setMouseGrabEnabled(true) && window->setKeyboardGrabEnabled(true);
        if (taken) retry->stop();
    });
    using namespace std::chrono_literals;
    retry->start(20ms);
}

/// What is chosen in it; null for nothing.
Item open(const NSMenu& menu, const std::function<QPoint(const QSize&)>& cornerFor) {
    Item chosen;
    NativeMenu native(menu, nullptr);
    QObject::connect(&native, &QMenu::triggered,
                     [&](const QAction* row) { chosen = itemOf(*row); });
    if (theOpen) theOpen->close();
    auto* const before = std::exchange(theOpen, &native);
    takeInput(native);
    native.exec(cornerFor(native.sizeHint()));
    theOpen = before;
    return chosen;
}

void run(const std::shared_ptr<NSMenu>& menu,
         const std::function<QPoint(const QSize&)>& cornerFor) {
    if (!menu || menu->itemArray().empty()) return;
    const Item chosen = open(*menu, cornerFor);
    if (!isAnyMenuOpen())
        for (NativeWindow* window : NativeWindow::all())
            window->menuClosed();
    if (const auto delegate = menu->delegate()) delegate->menuDidClose(*menu);
    const auto target = chosen ? chosen->target() : nullptr;
    if (target) chosen->action().send(*target, *chosen);
}

} // namespace

void NSMenu::popUpContextMenu(const std::shared_ptr<NSMenu>& menu, const NSEvent&, NSView&) {
    const QPoint pointer = rectOf({NSEvent::mouseLocation(), {}}).topLeft();
    run(menu, [&](const QSize&) { return pointer; });
}

void openMenuBeside(const std::shared_ptr<NSMenu>& menu, const QRect& place) {
    run(menu, [&](const QSize& size) { return cornerBeside(place, size); });
}

bool isOpen(const NSMenu& menu) { return theOpen && &theOpen->menu == &menu; }

bool close(const NSMenu& menu) {
    if (!isOpen(menu)) return false;
    theOpen->close();
    return true;
}

bool isAnyMenuOpen() { return theOpen != nullptr; }

void keepPopupsInFront() { qApp->installEventFilter(new PopupOrder(qApp)); }
