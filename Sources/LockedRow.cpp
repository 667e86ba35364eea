#include "LockedRow.h"

#include "Locked.h"
#include "SummitTag.h"

View LockedRow::body() const {
    const View texts = VStack({.alignment = HorizontalAlignment::leading, .spacing = 2},
                              {
                                  Text::verbatim(label),
                                  Text::verbatim(note)
                                      .font(Font::caption)
                                      .foregroundStyle(HierarchicalShapeStyle::secondary),
                              });
    return Button({.action = [feature = feature] { Locked::show(feature); },
                   .label = HStack({.spacing = 10}, {texts, Spacer(), SummitTag()})
                                .contentShape(Rectangle())})
        .buttonStyle(ButtonStyle::plain)
        .accessibilityHint("Part of Nimbrel SUMMIT. Opens a short explanation.");
}
