#include "AppKit/NSWorkspace.h"

#include "AppKit/Qt/Appearance/Preference.h"
#include "AppKit/Qt/Application/Launch.h"

#include <QProcess>
#include <QStandardPaths>

namespace {

/// What hands an address to the desktop's browser. Empty where there is nothing of the kind.
QString opener() {
    for (const char* name : {"xdg-open", "x-www-browser"})
        if (const QString found = QStandardPaths::findExecutable(name); !found.isEmpty())
            return found;
    return {};
}

Preference& contrast() {
    static auto* const preference = new Preference("contrast", {"contrast"});
    return *preference;
}

} // namespace

NSWorkspace& NSWorkspace::sharedWorkspace() {
    static auto* const workspace = new NSWorkspace; // Outlives the bus it listens to.
    return *workspace;
}

NSWorkspace::NSWorkspace() {
    contrast().onChanged = [this] {
        m_notificationCenter.postNotificationName(
            NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, nullptr);
    };
}

bool NSWorkspace::openURL(const NSURL& url) {
    QProcess process;
    process.setProgram(opener());
    process.setArguments({QString::fromStdString(url.absoluteString())});
    process.setProcessEnvironment(foundEnvironment());
    // Whatever it or the browser has to say is not this program's to print.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return !process.program().isEmpty() && process.startDetached();
}

bool NSWorkspace::accessibilityDisplayShouldReduceTransparency() const {
    return contrast().wish().value_or(false);
}
