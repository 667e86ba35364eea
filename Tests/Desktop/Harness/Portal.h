#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>

#include <string>

namespace Harness {

/// The desktop's settings as programs ask for them on the session bus: the wishes for contrast and
/// for dark colours.
class Portal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
    Q_PROPERTY(uint version READ version)

public:
    Portal(const std::string& busAddress, bool highContrast);
    ~Portal() override;

    void setHighContrast(bool highContrast); ///< Told to everyone who listens.
    void setDark(bool dark);

    uint version() const { return 2; }

public slots:
    QDBusVariant ReadOne(const QString& space, const QString& key);
    QDBusVariant Read(const QString& space, const QString& key); ///< Wraps its answer once more.

signals:
    void SettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    QDBusVariant contrast() const { return QDBusVariant(m_highContrast ? 1U : 0U); }
    QDBusVariant scheme() const { return QDBusVariant(m_dark ? 1U : 2U); }

    QDBusConnection m_bus;
    bool m_highContrast;
    bool m_dark = false;
};

} // namespace Harness
