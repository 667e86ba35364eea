#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariant>

#include <functional>

/// One number among the desktop's settings of appearance, as its settings portal tells it. Nothing
/// here waits for an answer.
class PortalSetting : public QObject {
    Q_OBJECT

public:
    explicit PortalSetting(QString key);

    /// 0 until the desktop has answered, and where it has no such setting.
    uint value() const { return m_value; }
    std::function<void()> onChanged;

private slots:
    void settingChanged(const QDBusMessage& signal);

private:
    void ask(const QString& method);
    void take(QVariant value);

    const QString m_key;
    QDBusServiceWatcher m_portalStart;
    uint m_value = 0;
};
