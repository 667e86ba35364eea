#include "AppKit/Qt/Menus/MenuPopup.h"

#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/Menus/MenuDrawing.h"
#include "AppKit/Qt/Panels/PanelPicture.h"
#include "WindowServer/Session.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScreen>

#include <algorithm>
#include <cmath>

using WindowServer::Session;
using WindowServer::ToolkitWindow;

namespace {

struct Modifier {
    NSUInteger flag;
    Qt::KeyboardModifier key;
    const char* sign;
};

// In the order in which they are shown.
constexpr Modifier modifiers[] = {
    {NSEventModifierFlagControl, Qt::ControlModifier, "⌃"},
    {NSEventModifierFlagOption, Qt::AltModifier, "⌥"},
    {NSEventModifierFlagCommand, Qt::MetaModifier, "⌘"},
};

QString keyOf(const NSMenuItem& item) {
    return QString::fromStdString(item.keyEquivalent()).toUpper();
}

/// The keys that stand for the item, as they are shown in its row: "⌃⌥⌘N". Empty where it has none.
QString keyEquivalentText(const NSMenuItem& item) {
    if (item.keyEquivalent().empty()) return {};
    QString text;
    for (const auto& modifier : modifiers)
        if (item.keyEquivalentModifierMask() & modifier.flag) text += modifier.sign;
    return text + keyOf(item);
}

/// Whether the press is that of the item's keys. Command is the Super key, and Option is Alt.
bool isKeyEquivalent(const NSMenuItem& item, const QKeyEvent& press) {
    const QString key = keyOf(item);
    return !key.isEmpty() && press.key() == key.at(0).unicode() &&
           std::ranges::all_of(modifiers, [&](const Modifier& modifier) {
               return bool(item.keyEquivalentModifierMask() & modifier.flag) ==
                      press.modifiers().testFlag(modifier.key);
           });
}

bool isModifier(int key) {
    return (key >= Qt::Key_Shift && key <= Qt::Key_Alt) || key == Qt::Key_AltGr ||
           key == Qt::Key_Super_L || key == Qt::Key_Super_R;
}

/// With its submenus, which answer as one.
class NativeMenu : public QMenu {
public:
    NativeMenu(const NSMenu& menu, Chosen chosen, QWidget* parent)
        : QMenu(parent), m_chosen(std::move(chosen)),
          m_translucent(Session::current().windows().areComposited()) {
        setWindowFlag(Qt::NoDropShadowWindowHint);
        setAttribute(Qt::WA_TranslucentBackground, m_translucent);
        setTitle(QString::fromStdString(menu.title()));
        for (const auto& item : menu.itemArray())
            add(item);
    }

protected:
    // The keys stand in the row, but not in the item's name, which is read out.
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override {
        QMenu::initStyleOption(option, action);
        const auto item = m_items.find(action);
        if (item == m_items.end()) return;
        if (const QString keys = keyEquivalentText(*item->second); !keys.isEmpty())
            option->text += '\t' + keys;
    }

    // The whole menu answers to the keys of its items, whichever submenu is open.
    void keyPressEvent(QKeyEvent* event) override {
        if (isModifier(event->key())) return; // The first key of a chord closes no menu.
        auto* whole = this;
        while (auto* const parent = dynamic_cast<NativeMenu*>(whole->parentWidget()))
            whole = parent;
        auto* const action = whole->actionFor(*event);
        if (!action) return QMenu::keyPressEvent(event);
        if (!action->isEnabled()) return;
        action->trigger();
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
    void add(const std::shared_ptr<NSMenuItem>& item) {
        if (item->isSeparatorItem()) {
            addSeparator();
            return;
        }
        auto* const action = addAction(QString::fromStdString(item->title()).replace('&', "&&"));
        m_items[action] = item;
        action->setEnabled(item->isEnabled());
        if (item->image()) action->setIcon(inkIconFrom(*item->image()));
        if (item->submenu())
            action->setMenu(new NativeMenu(*item->submenu(), m_chosen, this));
        else
            connect(action, &QAction::triggered, this, [this, item] { m_chosen(item); });
    }

    QAction* actionFor(const QKeyEvent& press) const {
        for (auto* const action : actions()) {
            if (const auto* submenu = dynamic_cast<const NativeMenu*>(action->menu())) {
                if (auto* const found = submenu->actionFor(press)) return found;
                continue;
            }
            const auto item = m_items.find(action);
            if (item != m_items.end() && isKeyEquivalent(*item->second, press)) return action;
        }
        return nullptr;
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

    const Chosen m_chosen;
    const bool m_translucent;
    std::shared_ptr<ToolkitWindow> m_held; ///< While its corners are cut.
    std::map<const QAction*, std::shared_ptr<NSMenuItem>> m_items;
};

} // namespace

std::unique_ptr<QMenu> nativeMenu(const NSMenu& menu, Chosen chosen) {
    return std::make_unique<NativeMenu>(menu, std::move(chosen), nullptr);
}
