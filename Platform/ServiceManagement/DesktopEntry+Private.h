#pragma once

#include "Foundation/TextFile+Private.h"

/// The text of a desktop entry: what a program is called and how it starts. Keys that are not
/// spoken of here stay as they are.
class DesktopEntry {
public:
    explicit DesktopEntry(const QByteArray& text) : m_section(text, "[Desktop Entry]") {}
    QByteArray text() const { return m_section.text(); }

    /// Whether the user, or the desktop that runs, keeps it from starting. A desktop is known by
    /// XDG_CURRENT_DESKTOP; an entry that is kept for certain desktops does not start on one that
    /// is not known.
    bool isDisabled() const;

    /// Whether it names an application whose file is there and can be executed.
    bool isStartable() const;

    /// Makes it start this executable on all desktops, and gives it a name and an icon where it
    /// has none.
    void enable(const QByteArray& program, const QByteArray& name, const QByteArray& icon);

    /// Makes all desktops pass it over.
    void hide() { m_section.set("Hidden", "true"); }

    bool operator==(const DesktopEntry&) const = default;

private:
    bool isForThisDesktop() const;

    TextSection m_section;
};

/// A command line that starts the executable, as the value of a key.
QByteArray commandLineOf(const QByteArray& program);

/// The executable that the value of such a key starts. Empty where it is no command line.
std::optional<QByteArray> programOf(const QByteArray& commandLine);
