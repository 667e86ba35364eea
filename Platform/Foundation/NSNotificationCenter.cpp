#include "Foundation/NSNotificationCenter.h"

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
    static NSNotificationCenter center;
    return center;
}

id NSNotificationCenter::addObserverForName(const NSNotificationName& name, const id&,
                                            NSOperationQueue&, Block block) {
    m_observers.push_back(std::make_shared<Observer>(Observer{name, std::move(block)}));
    return m_observers.back();
}

void NSNotificationCenter::postNotificationName(const NSNotificationName& name, const id& object) {
    const NSNotification notification(name, object);
    const auto observers = m_observers; // A block may add observers.
    for (const auto& observer : observers)
        if (observer->name == name) observer->block(notification);
}
