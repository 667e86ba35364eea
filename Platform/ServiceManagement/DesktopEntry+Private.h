#pragma once

#include "Foundation/TextSection+Private.h"

#include <optional>
#include <string>
#include <string_view>

/// The text of a desktop entry: what a program is called and how it starts. Keys that are not
/// spoken of here stay as they are.
class DesktopEntry {
public:
    explicit DesktopEntry(std::string_view text) : m_section(text, "[Desktop Entry]") {}

    std::string text() const { return m_section.text(); }

    /// Whether the user, or the desktop that runs, keeps it from starting. A desktop is known by
    /// XDG_CURRENT_DESKTOP; an entry that is kept for certain desktops does not start on one that
    /// is not known.
    bool isDisabled() const;

    /// Whether it names an application whose file is there and can be executed.
    bool isStartable() const;

    /// Makes it start this executable on all desktops, and gives it a name and an icon where it
    /// has none.
    void enable(const std::string& program, const std::string& name, const std::string& icon);

    /// Makes all desktops pass it over.
    void hide() { m_section.set("Hidden", "true"); }

    bool operator==(const DesktopEntry&) const = default;

private:
    bool isForThisDesktop() const;

    TextSection m_section;
};

/// A command line that starts the executable, as the value of a key.
std::string commandLineOf(const std::string& program);

/// The executable that the value of such a key starts. Empty where it is no command line.
std::optional<std::string> programOf(std::string_view commandLine);
