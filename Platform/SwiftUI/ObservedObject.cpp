#include "SwiftUI/ObservedObject.h"

#include <algorithm>

namespace {
ObservationScope* current = nullptr;
}

ObservationScope::ObservationScope() : m_outer(std::exchange(current, this)) {}
ObservationScope::~ObservationScope() { current = m_outer; }

void ObservationScope::noteRead(const std::shared_ptr<ObservableObject>& object) {
    if (!current) return;
    auto& objects = current->m_objects;
    if (std::find(objects.begin(), objects.end(), object) == objects.end())
        objects.push_back(object);
}
