#include "AppKit/PanelAccessible+Private.h"

#include "AppKit/PanelWidget+Private.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

class PanelAccessible : public QAccessibleWidget {
public:
    explicit PanelAccessible(PanelWidget& panel) : QAccessibleWidget(&panel), m_panel(panel) {}

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

    PanelWidget& m_panel;
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    auto* panel = dynamic_cast<PanelWidget*>(object);
    return panel ? new PanelAccessible(*panel) : nullptr;
}

} // namespace

void offerPanelsToAssistiveTechnology() { QAccessible::installFactory(interfaceOf); }
