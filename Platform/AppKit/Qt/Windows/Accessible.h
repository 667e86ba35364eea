#pragma once

#include <QAccessible>

#include <functional>
#include <vector>

/// What a widget tells assistive technology of itself, beside what the toolkit knows. A button can
/// be pressed without more ado, and one that can be checked says whether it is.
class Accessible {
public:
    using Actions = std::vector<std::pair<QString, std::function<void()>>>;

    virtual ~Accessible() = default;

    virtual QAccessible::Role accessibleRole() const = 0;
    /// By their names. They run once the call is answered: what they open may stay for long.
    virtual Actions accessibleActions() { return {}; }
    /// One element, whatever stands within: its name tells that.
    virtual bool isOneElement() const { return false; }
};
