// Objects that tell of a change before it happens.
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

/// Ends a subscription when its last copy goes.
using AnyCancellable = std::shared_ptr<void>;

/// Announces that an object is about to change.
class ObservableObjectPublisher {
public:
    /// Runs the block at each announcement for as long as the result is held.
    AnyCancellable sink(std::function<void()> block) {
        auto subscriber = std::make_shared<std::function<void()>>(std::move(block));
        m_subscribers.push_back(subscriber);
        return subscriber;
    }

    void send() {
        m_subscribers.remove_if([](const auto& subscriber) { return subscriber.expired(); });
        // A copy, because a subscriber may subscribe anew.
        for (const auto& weak : std::list(m_subscribers))
            if (const auto subscriber = weak.lock()) (*subscriber)();
    }

private:
    std::list<std::weak_ptr<std::function<void()>>> m_subscribers;
};

/// An object whose published members announce their writes here.
class ObservableObject {
public:
    ObservableObject() = default;
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;
    virtual ~ObservableObject() = default;

    ObservableObjectPublisher objectWillChange;
};

/// A member of an observable object that announces each write, before the new value is stored.
template <class Value> class Published {
public:
    /// `didSet` is given the old value after each write; the first value runs nothing.
    Published(ObservableObject& owner, Value initial,
              std::function<void(const Value& oldValue)> didSet = {})
        : m_owner(owner), m_value(std::move(initial)), m_didSet(std::move(didSet)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    operator const Value&() const { return m_value; }

    Published& operator=(Value value) {
        m_owner.objectWillChange.send();
        const Value oldValue = std::exchange(m_value, std::move(value));
        if (m_didSet) m_didSet(oldValue);
        return *this;
    }

private:
    ObservableObject& m_owner;
    Value m_value;
    const std::function<void(const Value&)> m_didSet;
};
