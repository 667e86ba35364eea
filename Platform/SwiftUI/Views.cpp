#include "SwiftUI/ViewNode+Private.h"

VStack::VStack(const Options& options, std::initializer_list<View> children)
    : View(ViewNode{StackNode{true, options.alignment, options.spacing, children}}) {}

HStack::HStack(const Options& options, std::initializer_list<View> children)
    : View(ViewNode{StackNode{false, options.alignment, options.spacing, children}}) {}

Spacer::Spacer() : View(ViewNode{SpacerNode{}}) {}
Spacer::Spacer(const Options& options) : View(ViewNode{SpacerNode{options.minLength}}) {}

Divider::Divider() : View(ViewNode{DividerNode{}}) {}

ScrollView::ScrollView(const View& content) : View(ViewNode{ScrollNode{content}}) {}

ForEach::ForEach(Rows rows)
    : View(ViewNode{ForEachNode{std::move(rows.ids), std::move(rows.views)}}) {}

Form::Form(std::initializer_list<View> sections) : View(ViewNode{FormNode{sections}}) {}

Section::Section(const Options& options, std::initializer_list<View> rows)
    : View(ViewNode{SectionNode{options.header, options.footer, rows}}) {}

Text::Text(const std::string& key) : View(ViewNode{TextNode{key, false}}) {}
Text Text::verbatim(const std::string& text) { return Text(ViewNode{TextNode{text, true}}); }

Image::Image(const Options& options) : View(ViewNode{ImageNode{options.systemName}}) {}

Label::Label(const std::string& title, const Options& options)
    : View(ViewNode{LabelNode{title, options.systemImage}}) {}

View Shape::fill(const Color& color) const { return View(ViewNode{ShapeNode{*this, color}}); }

Button::Button(const Options& options)
    : View(ViewNode{ButtonNode{options.action, options.label}}) {}
Button::Button(const std::string& title, std::function<void()> action)
    : Button({.action = std::move(action), .label = Text(title)}) {}

Toggle::Toggle(const std::string& title, const Options& options)
    : View(ViewNode{ToggleNode{title, options.isOn}}) {}
