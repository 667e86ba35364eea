// View trees as text, and as something to press.
#pragma once

#include "SwiftUI/View.h"

#include <functional>
#include <string>

/// The tree, one view or modifier a line, children indented, modifiers below what they wrap, from
/// the innermost to the outermost. Bodies are asked for, and their views stand in their place.
///
///     HStack(center, spacing 4)
///         Image(lock.fill)
///         .font(9 bold)
///         Text("SUMMIT")
///     .padding(horizontal, 8)
///
/// A verbatim text is `Text(verbatim "…")`.
std::string describe(const View& view);

/// The action of the first button in the tree whose label reads so, its texts joined with ", ".
/// Null without such a button.
std::function<void()> actionOf(const View& view, const std::string& title);

/// Runs what appears with the tree, outermost first.
void appear(const View& view);
