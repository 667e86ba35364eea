#include "AppKit/Qt/Application/Launch.h"
#include "AppKit/Qt/Contents/TabButton.h"
#include "AppKit/Qt/Panels/PanelWindow.h"
#include "AppKit/Qt/StatusItem/DockedIcon.h"
#include "AppKit/Qt/Windows/ContentWindow.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

class PanelAccessible : public QAccessibleWidget {
public:
    explicit PanelAccessible(PanelWindow& panel) : QAccessibleWidget(&panel), m_panel(panel) {}

    QAccessible::Role role() const override {
        return isButton() ? QAccessible::Button : QAccessibleWidget::role();
    }

    QStringList actionNames() const override {
        return isButton() ? QStringList(pressAction()) : QStringList();
    }

    void doAction(const QString& name) override {
        if (name == pressAction() && isButton()) m_panel.press();
    }

private:
    bool isButton() const {
        return m_panel.view() && m_panel.view()->accessibilityRole() == NSAccessibilityButtonRole;
    }

    PanelWindow& m_panel;
};

class StatusAccessible : public QAccessibleWidget {
public:
    explicit StatusAccessible(DockedIcon& icon)
        : QAccessibleWidget(&icon, QAccessible::Button), m_icon(icon) {}

    QStringList actionNames() const override { return {pressAction(), showMenuAction()}; }

    void doAction(const QString& name) override {
        if (name == pressAction()) m_icon.click(NSEventTypeLeftMouseUp);
        if (name == showMenuAction()) m_icon.click(NSEventTypeRightMouseUp);
    }

private:
    DockedIcon& m_icon;
};

class TabAccessible : public QAccessibleWidget {
public:
    explicit TabAccessible(TabButton& tab)
        : QAccessibleWidget(&tab, QAccessible::PageTab), m_tab(tab) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? m_tab.text() : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = m_tab.isChecked();
        return state;
    }

    QStringList actionNames() const override {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override {
        if (name != pressAction()) return QAccessibleWidget::doAction(name);
        m_tab.click();
    }

private:
    TabButton& m_tab;
};

/// A window without a title is an alert.
QAccessible::Role roleOf(const ContentWindow& frame) {
    return frame.windowTitle().isEmpty() ? QAccessible::AlertMessage : QAccessible::Window;
}

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    if (auto* const panel = dynamic_cast<PanelWindow*>(object)) return new PanelAccessible(*panel);
    if (auto* const icon = dynamic_cast<DockedIcon*>(object)) return new StatusAccessible(*icon);
    if (auto* const frame = dynamic_cast<ContentWindow*>(object))
        return new QAccessibleWidget(frame, roleOf(*frame));
    if (auto* const tab = dynamic_cast<TabButton*>(object)) return new TabAccessible(*tab);
    if (auto* const row = dynamic_cast<TabRow*>(object))
        return new QAccessibleWidget(row, QAccessible::PageTabList);
    return nullptr;
}

} // namespace

void offerWidgetsToAssistiveTechnology() { QAccessible::installFactory(interfaceOf); }
