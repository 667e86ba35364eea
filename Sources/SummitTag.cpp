#include "SummitTag.h"

#include "Theme.h"

View SummitTag::body() const {
    return HStack({.spacing = 4},
                  {
                      Image({.systemName = "lock.fill"})
                          .font(Font::system({.size = 9, .weight = Font::Weight::bold})),
                      Text("SUMMIT")
                          .font(Font::system({.size = 10,
                                              .weight = Font::Weight::bold,
                                              .design = Font::Design::rounded}))
                          .tracking(0.6),
                  })
        .foregroundStyle(Theme::blue)
        .padding(Edge::Set::horizontal, 8)
        .padding(Edge::Set::vertical, 3)
        .background(Capsule().fill(Theme::blue.opacity(0.14)))
        .accessibilityElement({.children = AccessibilityChildBehavior::ignore})
        .accessibilityLabel("Part of Nimbrel SUMMIT");
}
