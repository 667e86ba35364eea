#include "SummitWindowView.h"

#include "SummitFeatureList.h"
#include "Theme.h"

namespace {

View header() {
    const View texts =
        VStack({.alignment = HorizontalAlignment::leading, .spacing = 2},
               {
                   Text("Nimbrel SUMMIT").font(Font::title2.bold()),
                   Text("Everything in Nimbrel Lite, plus more control, more looks and a blur that "
                        "reacts for you.")
                       .font(Font::callout)
                       .foregroundStyle(HierarchicalShapeStyle::secondary)
                       .fixedSize({.horizontal = false, .vertical = true}),
               });
    return HStack({.spacing = 12},
                  {
                      Image({.systemName = "star.fill"})
                          .font(Font::system({.size = 28}))
                          .foregroundStyle(Theme::blue),
                      texts,
                      Spacer({.minLength = 0}),
                  })
        .padding(20);
}

View footer(const SummitWindowView& view) {
    return HStack(
               {
                   Spacer(),
                   Button("Not Now", view.notNow).keyboardShortcut(KeyboardShortcut::cancelAction),
                   Button("Buy Nimbrel SUMMIT…", view.buy)
                       .keyboardShortcut(KeyboardShortcut::defaultAction),
               })
        .controlSize(ControlSize::large)
        .padding(16);
}

} // namespace

View SummitWindowView::body() const {
    return VStack({.spacing = 0},
                  {
                      header(),
                      Divider(),
                      ScrollView(View(SummitFeatureList()).padding(20)),
                      Divider(),
                      footer(*this),
                  })
        .tint(Theme::blue)
        .frame({.width = 500, .height = 600});
}
