#include "AppKit/Qt/Menus/KeyEquivalent.h"

namespace {

struct Modifier {
    NSUInteger flag;
    Qt::KeyboardModifier key;
    const char* sign;
};

// In the order in which they are shown.
constexpr Modifier modifiers[] = {
    {NSEventModifierFlagControl, Qt::ControlModifier, "⌃"},
    {NSEventModifierFlagOption, Qt::AltModifier, "⌥"},
    {NSEventModifierFlagCommand, Qt::MetaModifier, "⌘"},
};

QString keyOf(const NSMenuItem& item) {
    return QString::fromStdString(item.keyEquivalent()).toUpper();
}

} // namespace

QString keyEquivalentText(const NSMenuItem& item) {
    if (item.keyEquivalent().empty()) return {};
    QString text;
    for (const auto& modifier : modifiers)
        if (item.keyEquivalentModifierMask() & modifier.flag) text += modifier.sign;
    return text + keyOf(item);
}

bool isKeyEquivalent(const NSMenuItem& item, const QKeyEvent& press) {
    const QString key = keyOf(item);
    if (key.isEmpty() || press.key() != key.at(0).unicode()) return false;
    for (const auto& modifier : modifiers)
        if (bool(item.keyEquivalentModifierMask() & modifier.flag) !=
            press.modifiers().testFlag(modifier.key))
            return false;
    return true;
}
