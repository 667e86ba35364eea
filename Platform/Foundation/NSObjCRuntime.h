#pragma once

#include <functional>
#include <memory>

class NSObject;

using NSInteger = long;
using NSUInteger = unsigned long;

/// Any object, retained; null for nil.
using id = std::shared_ptr<void>;

/// A message that can be sent to an object whose class is not known: a pointer to a method without
/// arguments. An object that lacks the method ignores it; so does every object where it is empty.
class SEL {
public:
    SEL() = default;

    template <typename Class>
    SEL(void (Class::*method)())
        : m_send([method](NSObject& target) {
              if (auto* object = dynamic_cast<Class*>(&target)) (object->*method)();
          }) {}

    void send(NSObject& target) const {
        if (m_send) m_send(target);
    }

private:
    std::function<void(NSObject&)> m_send;
};
