#include "AppKit/NSAlert.h"
#include "AppKit/NSApplication.h"
#include "CoreGraphics/CGWindow.h"
#include "WindowServer/Session.h"

#include <QApplication>

namespace {

using WindowServer::Remedy;
using WindowServer::Session;

/// A message, and a text that says more.
std::pair<std::string, std::string> wordsOf(Remedy remedy) {
    const std::string name = QCoreApplication::applicationName().toStdString();
    const std::string extension = "the Shell extension “" + name + "”";
    const std::string untilThen = " Until then the screens stay as they are.";
    switch (remedy) {
    case Remedy::None:
        break;
    case Remedy::Consent:
        return {"Let GNOME cover the screens?",
                "In this session only GNOME itself can. " + name + " would enable " + extension +
                    ", which draws the cover and shows the buttons above it. The Extensions app "
                    "turns it off again."};
    case Remedy::Setting:
        return {"The screens cannot be covered yet",
                "Turn " + extension + " on in the Extensions app." + untilThen};
    case Remedy::NextLogin:
        return {"Log out and in again",
                "GNOME will find " + extension + " at the next login." + untilThen};
    case Remedy::OtherVersion:
        return {"This version of GNOME cannot be covered",
                "GNOME’s Shell is of a version that the extension of " + name +
                    " does not know, so the screens stay as they are. Look for a newer " + name +
                    ", or choose an X11 (Xorg) session when you log in."};
    }
    return {"A Wayland session cannot be covered",
            name + " covers X11 screens. Here its cover would hide some windows alone and swallow "
                   "every click, so the screens stay as they are. Choose an X11 (Xorg) session "
                   "when you log in."};
}

/// One alert is open at a time.
void explain(Remedy remedy) {
    static std::weak_ptr<NSAlert> theAlert;
    if (const auto open = theAlert.lock()) return open->window()->makeKeyAndOrderFront(nullptr);
    const auto alert = std::make_shared<NSAlert>();
    theAlert = alert;
    const auto& [message, text] = wordsOf(remedy);
    alert->setMessageText(message);
    alert->setInformativeText(text);
    const bool asks = remedy == Remedy::Consent;
    alert->addButtonWithTitle(asks ? "Enable" : "OK");
    if (asks) alert->addButtonWithTitle("Not now");
    NSApp->activateIgnoringOtherApps(true);
    const auto answer = alert->runModal();
    if (!asks || answer == NSModalResponseAbort) return;
    theAlert.reset();
    if (!Session::current().surfaces().allow(answer == NSAlertFirstButtonReturn))
        explain(Remedy::NextLogin);
}

} // namespace

bool CGRequestScreenCaptureAccess() {
    const bool granted = Session::current().surfaces().canCover();
    const auto tell = [] { explain(Session::current().surfaces().remedy()); };
    if (!granted) QMetaObject::invokeMethod(qApp, tell, Qt::QueuedConnection);
    return granted;
}
