#include "SwiftUIDescription.h"

#include "SwiftUI/AccessibleText+Private.h"
#include "SwiftUI/ViewNode+Private.h"

#include <sstream>

namespace {

template <class Number> std::string number(Number value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

std::string quoted(const std::string& text) { return '"' + text + '"'; }

std::string describe(HorizontalAlignment alignment) {
    return alignment == HorizontalAlignment::leading ? "leading" : "center";
}

std::string describe(VerticalAlignment alignment) {
    return alignment == VerticalAlignment::top ? "top" : "center";
}

std::string describe(Alignment alignment) {
    return alignment == Alignment::leading ? "leading" : "center";
}

std::string describe(const Color& color) {
    std::string text = "Color::";
    if (const auto* const name = std::get_if<Color::Name>(&color.base())) {
        constexpr const char* names[] = {"red", "pink", "secondary"};
        text += names[static_cast<int>(*name)];
    } else {
        const auto& [red, green, blue] = std::get<Color::Components>(color.base());
        text = "Color(" + number(red * 255) + ' ' + number(green * 255) + ' ' + number(blue * 255) +
               ')';
    }
    return color.opacity() == 1 ? text : text + " opacity " + number(color.opacity());
}

std::string describe(const Font& font) {
    constexpr const char* styles[] = {"body",   "headline", "subheadline",
                                      "title2", "callout",  "caption"};
    constexpr const char* weights[] = {"", " medium", " semibold", " bold"};
    std::string text =
        font.textStyle() ? styles[static_cast<int>(*font.textStyle())] : number(font.size());
    if (font.textStyle() != Font::TextStyle::headline)
        text += weights[static_cast<int>(font.weight())];
    if (font.design()) text += " rounded";
    return font.hasMonospacedDigit() ? text + " monospacedDigit" : text;
}

std::string describe(const Shape& shape) {
    switch (shape.kind()) {
    case Shape::Kind::rectangle:
        return "Rectangle";
    case Shape::Kind::roundedRectangle:
        return "RoundedRectangle(" + number(shape.cornerRadius()) + ')';
    case Shape::Kind::capsule:
        return "Capsule";
    }
    return {};
}

std::string describe(Edge::Set edges) {
    constexpr const char* names[] = {"horizontal", "vertical", "all"};
    return names[static_cast<int>(edges)];
}

std::string describe(const View::FixedFrame& frame) {
    std::string text = ".frame(";
    if (frame.width) text += "width " + number(*frame.width) + ", ";
    if (frame.height) text += "height " + number(*frame.height) + ", ";
    return text + describe(frame.alignment) + ')';
}

std::string describe(const Modifier& modifier) {
    return std::visit(
        Overloaded{
            [](const Font& font) { return ".font(" + describe(font) + ')'; },
            [](const Tracking& it) { return ".tracking(" + number(it.length) + ')'; },
            [](const ShapeStyle& style) {
                const auto* const color = std::get_if<Color>(&style);
                return ".foregroundStyle(" + (color ? describe(*color) : "secondary") + ')';
            },
            [](const Tint& tint) { return ".tint(" + describe(tint.color) + ')'; },
            [](const Padding& it) {
                return ".padding(" + describe(it.edges) + ", " + number(it.length) + ')';
            },
            [](const View::FixedFrame& frame) { return describe(frame); },
            [](const View::FlexibleFrame& frame) {
                return ".frame(maxWidth " + number(frame.maxWidth) + ", " +
                       describe(frame.alignment) + ')';
            },
            [](const View::FixedAxes& axes) {
                return std::string(".fixedSize(") + (axes.horizontal ? "horizontal" : "") +
                       (axes.horizontal && axes.vertical ? ", " : "") +
                       (axes.vertical ? "vertical" : "") + ')';
            },
            [](const Background&) { return std::string(".background"); },
            [](const Shape& shape) { return ".contentShape(" + describe(shape) + ')'; },
            [](ControlSize size) {
                return std::string(".controlSize(") +
                       (size == ControlSize::large ? "large" : "regular") + ')';
            },
            [](ButtonStyle style) {
                constexpr const char* names[] = {"automatic", "plain", "borderedProminent"};
                return std::string(".buttonStyle(") + names[static_cast<int>(style)] + ')';
            },
            [](FormStyle) { return std::string(".formStyle(grouped)"); },
            [](KeyboardShortcut shortcut) {
                return std::string(".keyboardShortcut(") +
                       (shortcut == KeyboardShortcut::defaultAction ? "default" : "cancel") +
                       "Action)";
            },
            [](const View::ElementOptions&) {
                return std::string(".accessibilityElement(children ignore)");
            },
            [](const AccessibilityLabel& it) {
                return ".accessibilityLabel(" + quoted(it.text) + ')';
            },
            [](const AccessibilityHint& it) {
                return ".accessibilityHint(" + quoted(it.text) + ')';
            },
            [](const OnAppear&) { return std::string(".onAppear"); },
        },
        modifier);
}

std::string describe(const StackNode& stack) {
    return std::string(stack.vertical ? "VStack(" : "HStack(") +
           std::visit([](auto alignment) { return describe(alignment); }, stack.alignment) +
           (stack.spacing ? ", spacing " + number(*stack.spacing) : "") + ')';
}

class Writer {
public:
    void write(const View& view) {
        std::visit([this](const auto& node) { write(node); }, view.node().kind);
    }

    std::string text() const { return m_text; }

private:
    void line(const std::string& text) { m_text += std::string(m_depth * 4, ' ') + text + '\n'; }

    void indented(const std::vector<View>& views) {
        ++m_depth;
        for (const View& view : views)
            write(view);
        --m_depth;
    }

    void write(const StackNode& stack) {
        line(describe(stack));
        indented(stack.children);
    }
    void write(const SpacerNode& spacer) {
        line(spacer.minLength ? "Spacer(minLength " + number(*spacer.minLength) + ')' : "Spacer");
    }
    void write(const DividerNode&) { line("Divider"); }
    void write(const ScrollNode& scroll) {
        line("ScrollView");
        indented({scroll.content});
    }
    void write(const ForEachNode& forEach) {
        for (std::size_t i = 0; i < forEach.ids.size(); ++i) {
            line("ForEach(" + forEach.ids[i] + ')');
            indented({forEach.children[i]});
        }
    }
    void write(const FormNode& form) {
        line("Form");
        indented(form.sections);
    }
    void write(const SectionNode& section) {
        line("Section(" + quoted(section.header) + ')');
        indented(section.rows);
        if (!section.footer) return;
        line("footer");
        indented({*section.footer});
    }
    void write(const TextNode& text) {
        line((text.verbatim ? "Text(verbatim " : "Text(") + quoted(text.text) + ')');
    }
    void write(const ImageNode& image) { line("Image(" + image.systemName + ')'); }
    void write(const LabelNode& label) {
        line("Label(" + quoted(label.title) + ", " + label.systemImage + ')');
    }
    void write(const ShapeNode& shape) {
        line(describe(shape.shape) + ".fill(" + describe(shape.fill) + ')');
    }
    void write(const ButtonNode& button) {
        line("Button");
        indented({button.label});
    }
    void write(const ToggleNode& toggle) {
        line("Toggle(" + quoted(toggle.title) + ", " + (toggle.isOn.wrappedValue() ? "on" : "off") +
             ')');
    }
    void write(const BodyNode& node) { write(node.body()); }
    void write(const ModifiedNode& node) {
        write(node.content);
        line(describe(node.modifier));
        const auto* const background = std::get_if<Background>(&node.modifier);
        if (background) indented({background->view});
    }

    std::string m_text;
    std::size_t m_depth = 0;
};

/// Every view of the tree, each before those within, bodies replaced by what they hold.
void visit(const View& view, const std::function<void(const View&)>& visitor) {
    visitor(view);
    const auto all = [&](const std::vector<View>& views) {
        for (const View& child : views)
            visit(child, visitor);
    };
    std::visit(Overloaded{
                   [&](const StackNode& node) { all(node.children); },
                   [&](const ScrollNode& node) { all({node.content}); },
                   [&](const ForEachNode& node) { all(node.children); },
                   [&](const FormNode& node) { all(node.sections); },
                   [&](const SectionNode& node) { all(node.rows); },
                   [&](const ButtonNode& node) { all({node.label}); },
                   [&](const BodyNode& node) { all({node.body()}); },
                   [&](const ModifiedNode& node) { all({node.content}); },
                   [](const auto&) {},
               },
               view.node().kind);
}

} // namespace

std::string describe(const View& view) {
    Writer writer;
    writer.write(view);
    return writer.text();
}

std::function<void()> actionOf(const View& view, const std::string& title) {
    std::function<void()> action;
    visit(view, [&](const View& each) {
        const auto* const button = std::get_if<ButtonNode>(&each.node().kind);
        if (button && !action && accessibleText(each) == title) action = button->action;
    });
    return action;
}

void appear(const View& view) {
    visit(view, [](const View& each) {
        const auto* const node = std::get_if<ModifiedNode>(&each.node().kind);
        const auto* const appear = node ? std::get_if<OnAppear>(&node->modifier) : nullptr;
        if (appear) appear->action();
    });
}
