#include "AppKit/NSAlert.h"
#include "AppKit/NSApplication.h"
#include "CoreGraphics/CGWindow.h"
#include "WindowServer/Session.h"

#include <QApplication>

namespace {

void explain() {
    static std::weak_ptr<NSAlert> theAlert;
    if (const auto open = theAlert.lock()) return open->window()->makeKeyAndOrderFront(nullptr);
    const auto alert = std::make_shared<NSAlert>();
    theAlert = alert;
    alert->setMessageText("A Wayland session cannot be covered");
    alert->setInformativeText(
        QCoreApplication::applicationName().toStdString() +
        " covers X11 screens. Here its cover would hide some windows alone and swallow "
        "every click, so the screens stay as they are. Choose an X11 (Xorg) session when you log "
        "in.");
    alert->addButtonWithTitle("OK");
    NSApp->activateIgnoringOtherApps(true);
    alert->runModal();
}

} // namespace

bool CGRequestScreenCaptureAccess() {
    const bool granted = WindowServer::Session::current().surfaces().canCover();
    if (!granted) QMetaObject::invokeMethod(qApp, explain, Qt::QueuedConnection);
    return granted;
}
