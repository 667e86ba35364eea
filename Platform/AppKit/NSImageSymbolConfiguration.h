#pragma once

#include "Foundation/NSObject.h"

#include <memory>

using NSFontWeight = double;

inline constexpr NSFontWeight NSFontWeightSemibold = 0.3;

/// How large and how bold a symbol is drawn. The symbols exist in one weight, semibold.
class NSImageSymbolConfiguration : public NSObject {
public:
    /// The point size is that of the text which the symbol would stand in.
    static std::shared_ptr<NSImageSymbolConfiguration> configurationWithPointSize(double pointSize,
                                                                                  NSFontWeight) {
        return std::shared_ptr<NSImageSymbolConfiguration>(
            new NSImageSymbolConfiguration(pointSize));
    }

    double pointSize() const { return m_pointSize; }

private:
    explicit NSImageSymbolConfiguration(double pointSize) : m_pointSize(pointSize) {}

    double m_pointSize;
};
