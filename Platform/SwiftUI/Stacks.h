// Views that lay out others.
#pragma once

#include "SwiftUI/View.h"

#include <initializer_list>
#include <optional>
#include <vector>

/// One below the other. Without a spacing of its own it parts them as the platform does.
struct VStack : View {
    struct Options {
        HorizontalAlignment alignment = HorizontalAlignment::center;
        std::optional<double> spacing = std::nullopt;
    };
    VStack(const Options& options, std::initializer_list<View> children);
};

/// From left to right.
struct HStack : View {
    struct Options {
        VerticalAlignment alignment = VerticalAlignment::center;
        std::optional<double> spacing = std::nullopt;
    };
    HStack(const Options& options, std::initializer_list<View> children);
    explicit HStack(std::initializer_list<View> children) : HStack({}, children) {}
};

/// Takes the room that the others in a stack leave.
struct Spacer : View {
    struct Options {
        double minLength;
    };
    /// Never less than the platform's spacing.
    Spacer();
    explicit Spacer(const Options& options);
};

/// A hairline across.
struct Divider : View {
    Divider();
};

/// Shows its content at full height and scrolls it where there is less room.
struct ScrollView : View {
    explicit ScrollView(const View& content);
};

/// One view for each element, for the stack or section around. Drawn anew, views are known again by
/// their order, not by their `id`.
struct ForEach : View {
    template <class Range, class Id, class Content>
    ForEach(const Range& range, Id, Content content) : ForEach(views(range, content)) {}

private:
    explicit ForEach(const std::vector<View>& views);

    template <class Range, class Content>
    static std::vector<View> views(const Range& range, Content content) {
        std::vector<View> views;
        for (const auto& element : range)
            views.push_back(content(element));
        return views;
    }
};
