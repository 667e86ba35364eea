#include "SettingsHeader.h"

#include "Links.h"
#include "Locked.h"
#include "Theme.h"

namespace {

std::string version() {
    return NSBundle::mainBundle()
        .objectForInfoDictionaryKey("CFBundleShortVersionString")
        .value_or("");
}

View supportButton() {
    return Button({.action = [] { Links::open(Links::support(), Links::Purpose::support); },
                   .label = Label("Support VARDEK", {.systemImage = "heart"})});
}

View buyButton() {
    return Button({.action = [] { Locked::showSummit(); },
                   .label = Label("Buy SUMMIT", {.systemImage = "star.fill"})})
        .buttonStyle(ButtonStyle::borderedProminent);
}

} // namespace

View SettingsHeader::body() const {
    const View row = HStack({.spacing = 10},
                            {
                                Text("Nimbrel Lite").font(Font::headline),
                                Text::verbatim(version())
                                    .font(Font::subheadline)
                                    .foregroundStyle(HierarchicalShapeStyle::secondary),
                                Spacer(),
                                supportButton(),
                                buyButton(),
                            })
                         .controlSize(ControlSize::regular)
                         .padding(Edge::Set::horizontal, 20)
                         .padding(Edge::Set::vertical, 10);
    return VStack({.spacing = 0}, {row, Divider()}).tint(Theme::blue);
}
