// What all classes of the platform are made of.
#pragma once

#include "CoreGraphics/CGGeometry.h"

#include <cstddef>
#include <functional>
#include <memory>

using NSPoint = CGPoint;
using NSSize = CGSize;
using NSRect = CGRect;

class NSObject;

using NSInteger = long;
using NSUInteger = unsigned long;

/// Any object, retained; null for nil.
using id = std::shared_ptr<void>;

/// A message to an object whose class is not known: a method that takes nothing, or the sender. An
/// object that lacks the method, or whose method takes another class of sender, ignores it.
class SEL {
public:
    SEL() = default;
    SEL(std::nullptr_t) {}

    template <typename Class>
    SEL(void (Class::*method)())
        : m_send([method](NSObject& target, NSObject&) {
              if (auto* object = dynamic_cast<Class*>(&target)) (object->*method)();
          }) {}

    template <typename Class, typename Sender>
    SEL(void (Class::*method)(Sender&))
        : m_send([method](NSObject& target, NSObject& sender) {
              auto* const object = dynamic_cast<Class*>(&target);
              auto* const known = dynamic_cast<Sender*>(&sender);
              if (object && known) (object->*method)(*known);
          }) {}
    explicit operator bool() const { return m_send != nullptr; }

    void send(NSObject& target, NSObject& sender) const {
        if (m_send) m_send(target, sender);
    }

private:
    std::function<void(NSObject&, NSObject&)> m_send;
};

/// The root of the platform's classes. An object is known by its identity and is never copied.
class NSObject {
public:
    NSObject() = default;
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;
    virtual ~NSObject() = default;

    virtual bool isEqual(const NSObject& other) const { return this == &other; }
};
