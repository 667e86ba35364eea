#include "SwiftUI/Qt/Accessibility.h"

#include "SwiftUI/Qt/ButtonWidget.h"

#include <QAccessibleWidget>
#include <QScrollArea>
#include <QTimer>

namespace {

/// Without children: what stands within is told by the name.
class SingleElement : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
};

class PressedElement : public SingleElement {
public:
    explicit PressedElement(ButtonWidget& button)
        : SingleElement(&button, QAccessible::Button), m_button(button) {}

    QStringList actionNames() const override {
        return QStringList(pressAction()) + SingleElement::actionNames();
    }

    void doAction(const QString& name) override {
        if (name != pressAction()) return SingleElement::doAction(name);
        // The caller waits for an answer, and what the press opens may stay for long.
        QTimer::singleShot(0, &m_button, [this] { m_button.click(); });
    }

private:
    ButtonWidget& m_button;
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    if (auto* const button = dynamic_cast<ButtonWidget*>(object))
        return new PressedElement(*button);
    if (auto* const group = dynamic_cast<AccessibleGroup*>(object))
        return new SingleElement(group, QAccessible::StaticText);
    if (auto* const scroll = qobject_cast<QScrollArea*>(object))
        return new QAccessibleWidget(scroll, QAccessible::Pane);
    return nullptr;
}

} // namespace

void offerElementsToAssistiveTechnology() { QAccessible::installFactory(interfaceOf); }
