#pragma once

#include "Combine/ObservableObject.h"

#include <vector>

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

/// While one lives, it notes every observed object that a view's body reads.
class ObservationScope {
public:
    ObservationScope();
    ~ObservationScope();
    ObservationScope(const ObservationScope&) = delete;
    ObservationScope& operator=(const ObservationScope&) = delete;

    static void noteRead(const std::shared_ptr<ObservableObject>& object);

    /// Each object once, in the order of the first reading.
    const std::vector<std::shared_ptr<ObservableObject>>& objects() const { return m_objects; }

private:
    ObservationScope* const m_outer;
    std::vector<std::shared_ptr<ObservableObject>> m_objects;
};

/// An object that a view is drawn from, and drawn anew from when it announces a change.
template <class Object> class ObservedObject {
public:
    ObservedObject(std::shared_ptr<Object> object) : m_object(std::move(object)) {}

    Object* operator->() const {
        ObservationScope::noteRead(m_object);
        return m_object.get();
    }

    /// One published member, to be read and written by a control.
    template <class Value> Binding<Value> projectedValue(Published<Value> Object::*member) const {
        ObservationScope::noteRead(m_object);
        return {[object = m_object, member]() -> Value { return (*object).*member; },
                [object = m_object, member](Value value) { (*object).*member = std::move(value); }};
    }

private:
    std::shared_ptr<Object> m_object;
};
