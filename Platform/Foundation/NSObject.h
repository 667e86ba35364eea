#pragma once

/// The root of the platform's classes. An object is known by its identity and is never copied.
class NSObject {
public:
    NSObject() = default;
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;
    virtual ~NSObject() = default;

    virtual bool isEqual(const NSObject& other) const { return this == &other; }
};
