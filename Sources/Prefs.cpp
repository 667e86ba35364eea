#include "Prefs.h"

#include <string>
#include <variant>

namespace {

std::string spotKey(uint32_t display) { return "buttonSpot." + std::to_string(display); }

} // namespace

Prefs& Prefs::shared() {
    static Prefs prefs;
    return prefs;
}

// This edition has no strength and no style of its own to keep.
Prefs::Prefs() {
    d.removeObjectForKey("strength");
    d.removeObjectForKey("style");
}

ButtonSpot Prefs::buttonSpot(uint32_t on) const {
    const auto array = d.arrayForKey(spotKey(on));
    if (!array || array->size() != 2) return {};
    const auto* side = std::get_if<double>(&array->front());
    const auto* down = std::get_if<double>(&array->back());
    if (!side || !down) return {};
    return {*side, *down};
}

void Prefs::setButtonSpot(uint32_t on, double side, double down) {
    d.setObject({side, down}, spotKey(on));
}
