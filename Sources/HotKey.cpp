#include "HotKey.h"

#include "Cover.h"

namespace {

constexpr EventHotKeyID toggleKey = {.signature = 'NLHK', .id = 1};

} // namespace

HotKey& HotKey::shared() {
    static HotKey hotKey;
    return hotKey;
}

void HotKey::register_() {
    if (ref) return;
    const EventTypeSpec pressed = {kEventClassKeyboard, kEventHotKeyPressed};
    InstallEventHandler(GetApplicationEventTarget(), hotKeyPressed, 1, &pressed, nullptr, &handler);
    EventHotKeyRef taken = nullptr;
    const OSStatus status = RegisterEventHotKey(kVK_ANSI_N, cmdKey | optionKey | controlKey,
                                                toggleKey, GetApplicationEventTarget(), 0, &taken);
    if (status == noErr) ref = taken;
}

OSStatus hotKeyPressed(EventHandlerCallRef, EventRef event, void*) {
    if (!event) return eventNotHandledErr;
    EventHotKeyID key = {};
    const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID,
                                              nullptr, sizeof key, nullptr, &key);
    if (status != noErr) return status;
    if (key.id != toggleKey.id) return eventNotHandledErr;
    if (Cover::shared()->shown())
        Cover::shared()->hide();
    else
        Cover::shared()->show();
    return noErr;
}
