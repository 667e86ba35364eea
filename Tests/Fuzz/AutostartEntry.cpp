// An autostart entry may hold anything, and the program's path any bytes: enabled, the entry starts
// that program; hidden, it does not.
#include "Target.h"

#include "ServiceManagement/DesktopEntry+Private.h"

namespace {

QByteArray valueIn(const DesktopEntry& entry, const char* key) {
    return TextSection(entry.text(), "[Desktop Entry]").value(key).value_or("");
}

} // namespace

/// The program's path ends at the first zero byte, as every path does; then comes the entry.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ::setenv("XDG_CURRENT_DESKTOP", "Nimbus:GNOME", true);
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QByteArray program = '/' + input.split('\0').first();
    const DesktopEntry found(input.mid(program.size()));
    found.isDisabled();
    found.isStartable();

    DesktopEntry enabled = found;
    enabled.enable(program, program, program);
    require(DesktopEntry(enabled.text()) == enabled, "an entry reads as it was written");
    require(!enabled.isDisabled(), "an enabled entry is not disabled");
    require(programOf(valueIn(enabled, "Exec")) == program, "it starts the program");
    DesktopEntry again = enabled;
    again.enable(program, program, program);
    require(again == enabled, "enabling once is enough");

    DesktopEntry hidden = found;
    hidden.hide();
    require(hidden.isDisabled(), "a hidden entry is disabled");
    return 0;
}
