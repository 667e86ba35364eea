#pragma once

#include "Harness/Desktop.h"

#include <QDBusConnection>

#include <set>
#include <string>
#include <vector>

namespace Harness {

/// One element of a program's windows, as assistive technology finds it.
struct Spoken {
    std::string role;
    std::string name;
    std::string description;
    std::set<std::string> states; ///< Of those that `ScreenReader` knows by name.
    std::string path;             ///< By which the program knows it.
    std::vector<Spoken> children;

    std::string line() const; ///< `push button "Name" (description) [checked]`
    /// The lines of this and of all within that is showing, deeper levels indented by two blanks.
    /// What is there for the layout alone, which screen readers pass over, has none.
    std::string lines(int depth = 0) const;
    /// This element or the first within that has the state; null without one.
    const Spoken* with(const std::string& state) const;
    /// The same for a name.
    const Spoken* called(const std::string& wanted) const;
};

/// Assistive technology on a desktop that has a session bus. It is there before the program starts,
/// which finds it as it would find any.
class ScreenReader {
public:
    explicit ScreenReader(const Desktop& desktop);
    ~ScreenReader();

    /// The windows on the screen of the one program that is known.
    std::vector<Spoken> windows() const;

    /// What has the keyboard, as its role and name; empty where nothing has.
    std::string focused() const;

    void press(const Spoken& element) const;

private:
    Spoken read(const std::string& service, const std::string& path) const;
    std::pair<std::string, std::string> program() const;

    Process m_launcher;
    QDBusConnection m_bus;
};

} // namespace Harness
