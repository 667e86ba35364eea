#pragma once

/// The desktop's own typeface in a size.
class NSFont {
public:
    /// The size is in points.
    static NSFont systemFontOfSize(double size) { return NSFont(size); }

    double pointSize() const { return m_pointSize; }
    bool operator==(const NSFont&) const = default;

private:
    explicit NSFont(double size) : m_pointSize(size) {}

    double m_pointSize;
};
