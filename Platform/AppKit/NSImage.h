#pragma once

#include "Foundation/Foundation.h"

using NSFontWeight = double;

inline constexpr NSFontWeight NSFontWeightSemibold = 0.3;

/// How large and how bold a symbol is drawn. The symbols exist in one weight, semibold.
class NSImageSymbolConfiguration : public NSObject {
public:
    /// The point size is that of the text which the symbol would stand in.
    static std::shared_ptr<NSImageSymbolConfiguration> configurationWithPointSize(double pointSize,
                                                                                  NSFontWeight) {
        return std::make_shared<NSImageSymbolConfiguration>(pointSize);
    }
    explicit NSImageSymbolConfiguration(double pointSize) : m_pointSize(pointSize) {}

    double pointSize() const { return m_pointSize; }

private:
    const double m_pointSize;
};

/// A picture that is drawn anew wherever it is shown: a symbol of the platform's, or what a handler
/// draws. A symbol as a template takes the colour of its surroundings.
class NSImage : public NSObject {
public:
    /// Draws into the rectangle it is given. False for nothing to show.
    using DrawingHandler = std::function<bool(const NSRect&)>;

    /// Null for a symbol that the platform does not have.
    static std::shared_ptr<NSImage>
    imageWithSystemSymbolName(const std::string& name,
                              const std::optional<std::string>& accessibilityDescription);
    static std::shared_ptr<NSImage> imageWithSize(const NSSize& size, bool flipped,
                                                  DrawingHandler drawingHandler);

    /// The same symbol in another size; null for an image that is none.
    std::shared_ptr<NSImage>
    imageWithSymbolConfiguration(const NSImageSymbolConfiguration& configuration) const;

    /// A symbol's; empty for other images.
    const std::string& name() const { return m_name; }
    /// Empty where there is none.
    const std::string& accessibilityDescription() const { return m_accessibilityDescription; }

    /// In points.
    const NSSize& size() const { return m_size; }
    bool isTemplate() const { return m_template; }
    void setTemplate(bool isTemplate) { m_template = isTemplate; }

    /// Draws into the view that is being drawn. A symbol is black.
    void drawInRect(const NSRect& rect) const;

private:
    NSImage(const NSSize& size, bool flipped, DrawingHandler drawingHandler)
        : m_size(size), m_flipped(flipped), m_drawingHandler(std::move(drawingHandler)) {}

    static std::shared_ptr<NSImage> symbol(const std::string& name, double pointSize);

    std::string m_name;
    std::string m_accessibilityDescription;
    NSSize m_size;
    bool m_flipped;
    DrawingHandler m_drawingHandler;
    bool m_template = false;
};
