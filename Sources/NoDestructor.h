#pragma once

#include <utility>

/// A global that is kept until the process ends, whatever it is that ends it, and so is never
/// destroyed.
template <class Object> class NoDestructor {
public:
    NoDestructor() : m_object() {}
    explicit NoDestructor(Object object) : m_object(std::move(object)) {}
    NoDestructor(const NoDestructor&) = delete;
    NoDestructor& operator=(const NoDestructor&) = delete;
    ~NoDestructor() {} // Of a union's members, the destructor of the class leaves every one alone.

    Object& operator*() { return m_object; }

private:
    union {
        Object m_object;
    };
};
