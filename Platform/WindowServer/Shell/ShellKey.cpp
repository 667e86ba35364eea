#include "WindowServer/Shell/ShellKey.h"

namespace WindowServer {

bool ShellKey::take(const KeyChord& chord) {
    if (m_chord) return false;
    m_chord = chord;
    m_onServer.onPressed = [this] { onPressed(); };
    const bool taken = m_onServer.take(chord);
    return m_link.isAttached() ? grab() : taken;
}

void ShellKey::attached() {
    if (m_chord) grab();
}

/// By the key's code, which is its place whatever the layout makes of it.
bool ShellKey::grab() const {
    QString accelerator;
    if (m_chord->control) accelerator += "<Control>";
    if (m_chord->alt) accelerator += "<Alt>";
    if (m_chord->super) accelerator += "<Super>";
    accelerator += "0x" + QString::number(m_chord->kernelCode + firstKeycode, 16);
    return m_link.ask("GrabKey", {accelerator});
}

} // namespace WindowServer
