#pragma once

#include "Combine/ObservableObject.h"

#include <set>

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

/// The objects that the views' bodies have read so far; null while none is asked for.
inline std::set<std::shared_ptr<ObservableObject>>* readObjects = nullptr;

/// An object that a view is drawn from, and drawn anew from when it announces a change.
template <class Object> class ObservedObject {
public:
    ObservedObject(std::shared_ptr<Object> object) : m_object(std::move(object)) {}

    Object* operator->() const { return read().get(); }

    /// One published member, to be read and written by a control.
    template <class Value> Binding<Value> projectedValue(Published<Value> Object::*member) const {
        return {[object = read(), member]() -> Value { return (*object).*member; },
                [object = read(), member](Value value) { (*object).*member = std::move(value); }};
    }

private:
    const std::shared_ptr<Object>& read() const {
        if (readObjects) readObjects->insert(m_object);
        return m_object;
    }

    std::shared_ptr<Object> m_object;
};
