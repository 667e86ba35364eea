#pragma once

#include "Harness/Service.h"

#include <QDBusArgument>

namespace Harness {

/// The desktop's portal for shortcuts, whose user says yes to every one.
class ShortcutPortal : public Service {
public:
    explicit ShortcutPortal(const QString& busAddress)
        : Service(busAddress, "org.freedesktop.portal.Desktop") {}

    size_t bound() const { return m_bound; } ///< How often one was.
    void press() const {
        announce(root, "org.freedesktop.portal.GlobalShortcuts", "Activated",
                 {QVariant::fromValue(m_session), "toggle", qulonglong(), QVariantMap()});
    }

private:
    std::optional<QVariantList> answer(const QDBusMessage& question) override {
        const auto values = question.arguments();
        if (question.member() == "Get" && values.value(1) == "version")
            return {{QVariant::fromValue(QDBusVariant(1U))}};
        const bool isBinding = question.member() == "BindShortcuts";
        if (!isBinding && question.member() != "CreateSession") return {};
        const auto options = qdbus_cast<QVariantMap>(values.last());
        const QString name = question.service().mid(1).replace('.', '_') + '/';
        const QString request = root + ("/request/" + name) + options["handle_token"].toString();
        QVariantMap results;
        if (isBinding) {
            // The list of what is asked for has the form of what is granted.
            results["shortcuts"] = values.at(1);
            m_bound += values.at(0).value<QDBusObjectPath>() == m_session;
        } else {
            m_session = QDBusObjectPath(root + ("/session/" + name) +
                                        options["session_handle_token"].toString());
        }
        announce(request.toUtf8(), "org.freedesktop.portal.Request", "Response", {0U, results});
        return {{QVariant::fromValue(QDBusObjectPath(request))}};
    }

    static constexpr const char* root = "/org/freedesktop/portal/desktop";
    QDBusObjectPath m_session;
    size_t m_bound = 0;
};

} // namespace Harness
