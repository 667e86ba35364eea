#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariant>

#include <functional>

/// The desktop's contrast setting, as its settings portal tells it. Nothing here waits for an
/// answer.
class ContrastSetting : public QObject {
    Q_OBJECT

public:
    ContrastSetting();

    bool isHigher() const { return m_isHigher; }
    std::function<void()> onChanged;

private slots:
    void settingChanged(const QDBusMessage& signal);

private:
    void ask(const char* method);
    void take(QVariant value);

    QDBusServiceWatcher m_portalStart;
    bool m_isHigher = false;
};
