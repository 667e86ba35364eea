#include "SummitFeatureList.h"

#include "Locked.h"
#include "Theme.h"

#include <limits>

namespace {

View row(const LockedFeature& feature) {
    const View texts =
        VStack({.alignment = HorizontalAlignment::leading, .spacing = 1},
               {
                   Text::verbatim(feature.title)
                       .font(Font::system({.size = 13, .weight = Font::Weight::semibold})),
                   Text::verbatim(feature.detail)
                       .font(Font::callout)
                       .foregroundStyle(HierarchicalShapeStyle::secondary)
                       .fixedSize({.horizontal = false, .vertical = true}),
               });
    return HStack({.alignment = VerticalAlignment::top, .spacing = 12},
                  {
                      Image({.systemName = feature.symbol})
                          .font(Font::system({.size = 15}))
                          .foregroundStyle(Theme::blue)
                          .frame({.width = 24}),
                      texts,
                  });
}

} // namespace

View SummitFeatureList::body() const {
    return VStack({.alignment = HorizontalAlignment::leading, .spacing = 14},
                  {ForEach(Locked::all, &LockedFeature::id, row)})
        .frame(
            {.maxWidth = std::numeric_limits<double>::infinity(), .alignment = Alignment::leading});
}
