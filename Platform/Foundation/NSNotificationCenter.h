#pragma once

#include "Foundation/NSObject.h"

#include <string>
#include <vector>

/// Where a notification's block runs: the main thread, there is no other, within the post.
class NSOperationQueue : public NSObject {
public:
    static NSOperationQueue& mainQueue() {
        static NSOperationQueue queue;
        return queue;
    }
};

using NSNotificationName = std::string;

/// What a block is told: the name that was posted, and by whom.
class NSNotification {
public:
    NSNotification(NSNotificationName name, id object)
        : m_name(std::move(name)), m_object(std::move(object)) {}
    const NSNotificationName& name() const { return m_name; }
    const id& object() const { return m_object; }

private:
    NSNotificationName m_name;
    id m_object;
};

/// Hands posts on to whoever asked for their name.
class NSNotificationCenter : public NSObject {
public:
    using Block = std::function<void(const NSNotification&)>;

    static NSNotificationCenter& defaultCenter();

    /// Runs `block` at every post of `name`, for good. The object is nil: posts of one name come
    /// from one object here.
    id addObserverForName(const NSNotificationName& name, const id& object, NSOperationQueue& queue,
                          Block block);

    /// Runs every block, in the order of adding; one that is added meanwhile waits for the next.
    void postNotificationName(const NSNotificationName& name, const id& object);

private:
    struct Observer {
        NSNotificationName name;
        Block block;
    };
    std::vector<std::shared_ptr<Observer>> m_observers;
};
