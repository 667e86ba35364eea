#include "Foundation/NSNotificationCenter.h"

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
    static NSNotificationCenter center;
    return center;
}

id NSNotificationCenter::addObserverForName(const NSNotificationName& name, const id& object,
                                            NSOperationQueue&, Block block) {
    m_observers.push_back(
        std::make_shared<Observer>(Observer{name, object.get(), std::move(block)}));
    return m_observers.back();
}

void NSNotificationCenter::postNotificationName(const NSNotificationName& name, const id& object) {
    const NSNotification notification(name, object);
    const auto observers = m_observers; // A block may add observers.
    for (const auto& observer : observers) {
        const bool wanted = !observer->object || observer->object == object.get();
        if (observer->name == name && wanted) observer->block(notification);
    }
}
