// The kinds of view.
#pragma once

#include "SwiftUI/ObservedObject.h"
#include "SwiftUI/View.h"

#include <initializer_list>
#include <limits>

/// Wraps where it is wider than its room.
struct Text : View {
    /// In English, as everything here is.
    explicit Text(const std::string& text);
    static Text verbatim(const std::string& text) { return Text(text); }
};

/// A symbol as large as the text around it. One that the platform lacks is an empty place.
struct Image : View {
    struct Options {
        std::string systemName;
    };
    explicit Image(const Options& options);
};

/// A title with a symbol before it.
struct Label : View {
    struct Options {
        std::string systemImage;
    };
    Label(const std::string& title, const Options& options);
};

/// Runs its action when it is pressed.
struct Button : View {
    struct Options {
        std::function<void()> action;
        View label;
    };
    explicit Button(const Options& options);
    Button(const std::string& title, std::function<void()> action);
};

/// A title and a switch, which shows a value and changes it.
struct Toggle : View {
    struct Options {
        Binding<bool> isOn;
    };
    Toggle(const std::string& title, const Options& options);
};

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

/// One view for each element, for the stack around. Drawn anew, views are known again by
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

class Shape {
public:
    View fill(const Color& color) const;

protected:
    /// A corner bends no further than to the middle of the shorter side.
    explicit Shape(double cornerRadius) : m_cornerRadius(cornerRadius) {}

private:
    double m_cornerRadius;
};

struct Rectangle : Shape {
    Rectangle() : Shape(0) {}
};

struct RoundedRectangle : Shape {
    struct Options {
        double cornerRadius;
    };
    explicit RoundedRectangle(const Options& options) : Shape(options.cornerRadius) {}
};

/// Its ends are round.
struct Capsule : Shape {
    Capsule() : Shape(std::numeric_limits<double>::infinity()) {}
};

/// Settings in sections; it scrolls where it is taller than its room.
struct Form : View {
    explicit Form(std::initializer_list<View> sections);
};

/// Rows that belong together, with a title above and an explanation below.
struct Section : View {
    struct Options {
        std::string header;
        std::optional<View> footer = std::nullopt;
    };
    Section(const Options& options, std::initializer_list<View> rows);
};
