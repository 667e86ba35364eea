#include "AppKit/NSAlert.h"
#include "AppKit/NSApplication.h"
#include "CoreGraphics/CGWindow.h"
#include "WindowServer/Session.h"

#include <QApplication>

namespace {

using WindowServer::Remedy;
using WindowServer::Session;

/// Waits for the answer. One alert is open at a time.
NSModalResponse show(const std::string& message, const std::string& text,
                     const std::vector<std::string>& buttons) {
    static std::weak_ptr<NSAlert> theAlert;
    if (const auto open = theAlert.lock()) {
        open->window()->makeKeyAndOrderFront(nullptr);
        return NSModalResponseAbort;
    }
    const auto alert = std::make_shared<NSAlert>();
    theAlert = alert;
    alert->setMessageText(message);
    alert->setInformativeText(text);
    for (const auto& button : buttons)
        alert->addButtonWithTitle(button);
    NSApp->activateIgnoringOtherApps(true);
    return alert->runModal();
}

void explain(Remedy remedy) {
    const std::string name = QCoreApplication::applicationName().toStdString();
    const std::string extension = "the Shell extension “" + name + "”";
    const std::string untilThen = " Until then the screens stay as they are.";
    switch (remedy) {
    case Remedy::None:
        show("A Wayland session cannot be covered",
             name + " covers X11 screens. Here its cover would hide some windows alone and swallow "
                    "every click, so the screens stay as they are. Choose an X11 (Xorg) session "
                    "when you log in.",
             {"OK"});
        break;
    case Remedy::Consent: {
        const auto answer =
            show("Let GNOME cover the screens?",
                 "In this session only GNOME itself can. " + name + " would enable " + extension +
                     ", which draws the cover and shows the buttons above it. The Extensions app "
                     "turns it off again.",
                 {"Enable", "Not now"});
        if (answer == NSModalResponseAbort) break;
        const bool agreed = answer == NSAlertFirstButtonReturn;
        if (!Session::current().surfaces().allow(agreed)) explain(Remedy::NextLogin);
        break;
    }
    case Remedy::Setting:
        show("The screens cannot be covered yet",
             "Turn " + extension + " on in the Extensions app." + untilThen, {"OK"});
        break;
    case Remedy::NextLogin:
        show("Log out and in again",
             "GNOME will find " + extension + " at the next login." + untilThen, {"OK"});
        break;
    case Remedy::OtherVersion:
        show("This version of GNOME cannot be covered",
             "GNOME’s Shell is of a version that the extension of " + name +
                 " does not know, so the screens stay as they are. Look for a newer " + name +
                 ", or choose an X11 (Xorg) session when you log in.",
             {"OK"});
        break;
    }
}

} // namespace

bool CGRequestScreenCaptureAccess() {
    const bool granted = Session::current().surfaces().canCover();
    const auto tell = [] { explain(Session::current().surfaces().remedy()); };
    if (!granted) QMetaObject::invokeMethod(qApp, tell, Qt::QueuedConnection);
    return granted;
}
