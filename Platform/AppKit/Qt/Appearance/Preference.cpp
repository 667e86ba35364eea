#include "AppKit/Qt/Appearance/Preference.h"

#include "AppKit/Qt/Appearance/DesktopTheme.h"

#include <algorithm>
#include <utility>

namespace {
// What the portal's settings have in common.
constexpr uint noWish = 0;
constexpr uint wished = 1;
} // namespace

Preference::Preference(QString key, QStringList words)
    : m_portal(std::move(key)), m_words(std::move(words)) {
    const auto change = [this] {
        if (std::exchange(m_told, wish()) != m_told && onChanged) onChanged();
    };
    m_told = wish();
    m_portal.onChanged = change;
    connect(&DesktopTheme::current(), &DesktopTheme::changed, this, change);
}

std::optional<bool> Preference::wish() const {
    if (m_portal.value() != noWish) return m_portal.value() == wished;
    const QString theme = DesktopTheme::current().name();
    if (theme.isEmpty()) return {};
    return std::ranges::any_of(
        m_words, [&](const QString& word) { return theme.contains(word, Qt::CaseInsensitive); });
}
