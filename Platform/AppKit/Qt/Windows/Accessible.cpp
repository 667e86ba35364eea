#include "AppKit/Qt/Windows/Accessible.h"

#include "AppKit/Qt/Application/Launch.h"

#include <QAbstractButton>
#include <QAccessibleWidget>

namespace {

class AccessibleElement : public QAccessibleWidget {
public:
    AccessibleElement(QWidget& widget, Accessible& told)
        : QAccessibleWidget(&widget), m_told(told),
          m_button(qobject_cast<QAbstractButton*>(&widget)) {}
    QAccessible::Role role() const override { return m_told.accessibleRole(); }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = m_button && m_button->isCheckable();
        state.selected = m_button && m_button->isChecked();
        return state;
    }

    QStringList actionNames() const override {
        QStringList names;
        for (const auto& [name, run] : actions())
            names.append(name);
        return names + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override {
        for (const auto& [offered, run] : actions())
            if (offered == name) QMetaObject::invokeMethod(widget(), run, Qt::QueuedConnection);
        QAccessibleWidget::doAction(name);
    }

    int childCount() const override {
        return m_told.isOneElement() ? 0 : QAccessibleWidget::childCount();
    }
    QAccessibleInterface* child(int index) const override {
        return m_told.isOneElement() ? nullptr : QAccessibleWidget::child(index);
    }

private:
    Accessible::Actions actions() const {
        if (m_button) return {{pressAction(), [this] { m_button->click(); }}};
        return m_told.accessibleActions();
    }

    Accessible& m_told;
    QAbstractButton* const m_button; ///< Null for another widget.
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    auto* const told = dynamic_cast<Accessible*>(object);
    return told ? new AccessibleElement(static_cast<QWidget&>(*object), *told) : nullptr;
}

} // namespace

void offerWidgetsToAssistiveTechnology() { QAccessible::installFactory(interfaceOf); }
