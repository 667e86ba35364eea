#include "SupportSettings.h"

#include "Links.h"
#include "SettingsHeader.h"
#include "SummitFeatureList.h"
#include "Theme.h"

namespace {

View supportSection() {
    const View title =
        HStack({.spacing = 10},
               {
                   Image({.systemName = "heart.fill"})
                       .font(Font::system({.size = 22}))
                       .foregroundStyle(Color::pink),
                   Text("Thank you for using Nimbrel Lite")
                       .font(Font::system({.size = 15, .weight = Font::Weight::semibold})),
               });
    const View reason =
        Text("Nimbrel Lite is free, with no ads and no tracking. If it helps you keep your screens "
             "private, you can support VARDEK.")
            .foregroundStyle(HierarchicalShapeStyle::secondary)
            .fixedSize({.horizontal = false, .vertical = true});
    const View button =
        Button({.action = [] { Links::open(Links::support(), Links::Purpose::support); },
                .label = Label("Support VARDEK…", {.systemImage = "heart"})})
            .controlSize(ControlSize::large);
    return Section(
        {.header = "Support Nimbrel"},
        {VStack({.alignment = HorizontalAlignment::leading, .spacing = 12}, {title, reason, button})
             .padding(Edge::Set::vertical, 4)});
}

View summitSection() {
    const View list =
        VStack({.alignment = HorizontalAlignment::leading, .spacing = 14},
               {
                   Text::verbatim("Everything in Nimbrel Lite, plus more control, more looks and a "
                                  "blur that reacts for you.")
                       .foregroundStyle(HierarchicalShapeStyle::secondary)
                       .fixedSize({.horizontal = false, .vertical = true}),
                   SummitFeatureList(),
               })
            .padding(Edge::Set::vertical, 4);
    const View button = Button("Buy Nimbrel SUMMIT…",
                               [] { Links::open(Links::upgrade(), Links::Purpose::upgrade); })
                            .buttonStyle(ButtonStyle::borderedProminent)
                            .controlSize(ControlSize::large);
    return Section({.header = "What Nimbrel SUMMIT adds"}, {list, HStack({Spacer(), button})});
}

} // namespace

View SupportSettings::body() const {
    const View form = Form({supportSection(), summitSection()}).formStyle(FormStyle::grouped);
    return VStack({.spacing = 0}, {SettingsHeader(), form}).tint(Theme::blue);
}
