// The words that modifiers take.
#pragma once

enum class HorizontalAlignment { leading, center };
enum class VerticalAlignment { top, center };
enum class Alignment { leading, center };

struct Edge {
    enum class Set { horizontal, vertical, all };
};

enum class ControlSize { regular, large };
enum class ButtonStyle { automatic, plain, borderedProminent };
enum class FormStyle { grouped };

/// Return for the default action, Escape to cancel.
enum class KeyboardShortcut { cancelAction, defaultAction };

enum class AccessibilityChildBehavior { ignore };
