#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QVariant>

#include <functional>
#include <optional>

/// What the user wishes of all programs, or not, by the desktop's settings portal or else by the
/// name of its theme. Waits for no answer. Lives as long as the process.
class Preference : public QObject {
    Q_OBJECT

public:
    /// What the portal calls it, and what themes that give it have in their names.
    Preference(QString key, QStringList words);

    /// Nothing where neither tells.
    const std::optional<bool>& wish() const { return m_wish; }
    std::function<void()> onChanged;

private slots:
    void take(const QDBusMessage& answer);
    void settingChanged(const QDBusMessage& signal);

private:
    void ask();
    void take(QVariant setting);
    void settle();

    const QString m_key;
    const QStringList m_words;
    QDBusServiceWatcher m_portalStart;
    uint m_setting = 0; ///< The portal's: 1 for the wish, 0 while it has told of none.
    std::optional<bool> m_wish;
};
