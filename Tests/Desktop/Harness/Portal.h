#pragma once

#include "Harness/Service.h"

#include <map>

namespace Harness {

/// The desktop's settings as programs ask for them on the session bus: the wishes for contrast and
/// for dark colours.
class Portal : public Service {
public:
    Portal(const QString& busAddress, bool highContrast)
        : Service(busAddress, "org.freedesktop.portal.Desktop") {
        m_values["contrast"] = highContrast;
    }

    /// Told to everyone who listens.
    void setHighContrast(bool highContrast) { tell("contrast", highContrast); }
    void setDark(bool dark) { tell("color-scheme", dark ? 1 : 2); }

private:
    void tell(const QString& key, uint value) {
        m_values[key] = value;
        announce("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
                 "SettingChanged", {group, key, QVariant::fromValue(QDBusVariant(value))});
    }
    std::optional<QVariantList> answer(const QDBusMessage& question) override {
        const auto found = m_values.find(question.arguments().value(1).toString());
        if (question.arguments().value(0) != group || found == m_values.end()) return {};
        const auto once = QVariant::fromValue(QDBusVariant(found->second));
        if (question.member() == "ReadOne") return {{once}};
        return {{QVariant::fromValue(QDBusVariant(once))}}; // Read wraps its answer once more.
    }

    const QString group = "org.freedesktop.appearance";
    std::map<QString, uint> m_values = {{"color-scheme", 2}};
};

} // namespace Harness
