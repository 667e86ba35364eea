#pragma once

#include "Harness/Desktop.h"

#include <QDBusConnection>

#include <functional>
#include <set>

namespace Harness {

/// One element of a program's windows, as assistive technology finds it.
struct Spoken {
    std::string role;
    std::string name;
    std::string description;
    std::set<std::string> states; ///< Of those that `ScreenReader` knows by name.
    QString path;                 ///< By which the program knows it.
    std::vector<Spoken> children;

    std::string line() const { return role + " \"" + name + '"'; }
    /// "frame, push button, check box [checked]": of this and of all within that is showing, but
    /// for what is there for the layout alone, which screen readers pass over.
    std::string roles() const;
    /// This element or the first within for which it holds; null without one.
    const Spoken* find(const std::function<bool(const Spoken&)>& wanted) const;
    const Spoken* called(const std::string& wanted) const {
        return find([&](const Spoken& each) { return each.name == wanted; });
    }
};

/// Assistive technology on a desktop that has a session bus. It is there before the program starts,
/// which finds it as it would find any.
class ScreenReader {
public:
    explicit ScreenReader(const Desktop& desktop) : ScreenReader(desktop.environment()) {}
    explicit ScreenReader(const Environment& environment);
    ~ScreenReader();

    /// The windows on the screen of the one program that is known.
    std::vector<Spoken> windows() const;

    std::string focused() const; ///< The line of what has the keyboard.

    void press(const Spoken& element) const;
    Area areaOf(const Spoken& element) const; ///< On the screen.

private:
    struct Place {
        QString service, path;
    };
    QVariantList ask(const Place& whom, const char* interface, const char* member,
                     const QVariantList& arguments = {}) const;
    std::vector<Place> childrenOf(const Place& element) const;
    Spoken read(const Place& element) const;
    QString property(const Place& whom, const char* name) const;
    Place program() const;

    Process m_launcher;
    QDBusConnection m_bus;
};

} // namespace Harness
