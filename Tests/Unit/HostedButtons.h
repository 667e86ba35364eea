#pragma once

#include <QAbstractButton>
#include <QAccessible>

#include <stdexcept>

/// The button that assistive technology knows by this name.
inline QAbstractButton& buttonIn(const QWidget& host, const QString& name) {
    for (auto* const button : host.findChildren<QAbstractButton*>())
        if (QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name) == name)
            return *button;
    throw std::runtime_error("No button " + name.toStdString());
}
