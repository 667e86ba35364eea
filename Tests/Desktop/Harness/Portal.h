#pragma once

#include "Harness/Service.h"

#include <QDBusVariant>

namespace Harness {

/// The desktop's settings as programs ask for them on the session bus: the wishes for contrast and
/// for dark colours.
class Portal : public Service {
public:
    Portal(const std::string& busAddress, bool highContrast)
        : Service(busAddress, "org.freedesktop.portal.Desktop"), m_highContrast(highContrast) {}

    /// Told to everyone who listens.
    void setHighContrast(bool highContrast) {
        m_highContrast = highContrast;
        tell("contrast");
    }
    void setDark(bool dark) {
        m_dark = dark;
        tell("color-scheme");
    }

private:
    QDBusVariant value(const QString& key) const {
        return QDBusVariant(key == "contrast" ? (m_highContrast ? 1U : 0U) : (m_dark ? 1U : 2U));
    }
    void tell(const QString& key) const {
        announce("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
                 "SettingChanged", {appearance, key, QVariant::fromValue(value(key))});
    }
    std::optional<QVariantList> answer(const QDBusMessage& question) override {
        const QString key = question.arguments().value(1).toString();
        if (question.arguments().value(0) != appearance ||
            (key != "contrast" && key != "color-scheme"))
            return {};
        const auto once = QVariant::fromValue(value(key));
        if (question.member() == "ReadOne") return {{once}};
        return {{QVariant::fromValue(QDBusVariant(once))}}; // Read wraps its answer once more.
    }

    const QString appearance = "org.freedesktop.appearance";
    bool m_highContrast;
    bool m_dark = false;
};

} // namespace Harness
