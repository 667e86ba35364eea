#pragma once

#include "AppKit/Qt/Appearance/PortalSetting.h"

#include <QStringList>

#include <functional>
#include <optional>

/// Something that the user wants of all programs, or not: as the settings portal tells it, and
/// where that knows of no wish, as the name of the desktop's theme does.
class Preference : public QObject {
public:
    /// What the portal calls it, and what themes that give it have in their names.
    Preference(QString key, QStringList words);

    std::optional<bool> wish() const; ///< Nothing where neither tells.
    std::function<void()> onChanged;

private:
    PortalSetting m_portal;
    const QStringList m_words;
    std::optional<bool> m_told;
};
