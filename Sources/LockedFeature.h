#pragma once

#include <string>

/// Something that the paid edition adds.
struct LockedFeature {
    std::string id;     ///< Unique among all.
    std::string title;  ///< Its name, short.
    std::string detail; ///< What it does, in a sentence.
    std::string symbol; ///< The name of a system symbol.
    bool operator==(const LockedFeature&) const = default;
};
