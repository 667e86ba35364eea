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

/// One view for each element, known by its `id`, for the stack or section around.
struct ForEach : View {
    template <class Range, class Id, class Content>
    ForEach(const Range& range, Id identify, Content content)
        : ForEach(rows(range, identify, content)) {}

private:
    struct Rows {
        std::vector<std::string> ids;
        std::vector<View> views;
    };
    explicit ForEach(Rows rows);

    template <class Range, class Id, class Content>
    static Rows rows(const Range& range, Id identify, Content content) {
        Rows rows;
        for (const auto& element : range) {
            rows.ids.push_back(std::invoke(identify, element));
            rows.views.push_back(content(element));
        }
        return rows;
    }
};
