#pragma once

#include <functional>
#include <utility>

/// A value that is kept elsewhere, to be read and written.
template <class Value> class Binding {
public:
    Binding(std::function<Value()> get, std::function<void(Value)> set)
        : m_get(std::move(get)), m_set(std::move(set)) {}

    Value wrappedValue() const { return m_get(); }
    void setWrappedValue(Value value) const { m_set(std::move(value)); }

private:
    std::function<Value()> m_get;
    std::function<void(Value)> m_set;
};
