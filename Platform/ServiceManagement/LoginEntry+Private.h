#pragma once

#include "Foundation/TextFile+Private.h"
#include "ServiceManagement/ServiceManagement.h"

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

/// An entry `<identifier>.desktop` in the autostart folder of the user's configuration. It is
/// replaced as a whole, so a reader or a crash finds the old text or the new one. Where it is a
/// link, what it leads to is replaced; removing it leaves that alone.
///
/// A system's own entry of that name counts where the user has none. It can only be hidden, by an
/// entry of the user's, which then is what removing leaves behind.
class LoginEntry : public SMAppService {
public:
    struct Application {
        QByteArray identifier;
        QByteArray name;
        QByteArray program; ///< Its executable's absolute path.
    };
    explicit LoginEntry(Application application);

    SMAppServiceStatus status() const override;
    bool registerAndReturnError(std::shared_ptr<NSError>& error) override;
    bool unregisterAndReturnError(std::shared_ptr<NSError>& error) override;

private:
    const Application m_application;
};
