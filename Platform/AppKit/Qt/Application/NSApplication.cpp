#include "AppKit/NSApplication.h"
#include "AppKit/NSAlert.h"
#include "AppKit/Qt/Application/Launch.h"
#include "AppKit/Qt/Windows/ContentWindow.h"
#include "AppKit/Qt/Windows/Coordinates.h"
#include "Foundation/NSBundle+Private.h"

#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QScopedValueRollback>
#include <QWindow>

#include <algorithm>
#include <csignal>
#include <cstdlib>

#include <sys/prctl.h>
#include <sys/resource.h>

using WindowServer::Session;

NSApplication* NSApp = nullptr;

namespace {

QEventLoop* theModalLoop = nullptr; ///< The innermost.

/// The process holds what stands on the screens: no core file and no debugger may take it away.
void harden() {
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    ::prctl(PR_SET_DUMPABLE, 0);
}

constexpr int keepExisting = 0; ///< Tells setenv to leave a variable that is set.

void connectToWindowServer() {
    std::signal(SIGPIPE, SIG_IGN); // A server that has gone shows in the connection's own error.
    if (!Session::open()) {
        NSLog("X11: no server answers. Set DISPLAY to a running X server.");
        std::exit(EXIT_FAILURE);
    }
    // Nothing here draws with OpenGL.
    ::setenv("QT_XCB_GL_INTEGRATION", "none", keepExisting);
    ::setenv("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none", keepExisting);
    QLoggingCategory::setFilterRules("qt.qpa.wayland.warning=false"); // It knows none of that name.
    const int scale = Session::current().settings().windowScale();
    if (scale != 1) ::setenv("QT_SCALE_FACTOR", std::to_string(scale).c_str(), keepExisting);
}

/// The toolkit closes its menus as another program becomes the active one, and hears of that a
/// tenth of a second late. A menu that was opened meanwhile is to stay: it has the mouse and the
/// keyboard whichever program is active.
class Toolkit : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        if (event->type() != QEvent::ApplicationDeactivate)
            return QApplication::notify(receiver, event);
        return QCoreApplication::notify(receiver, event); // NOLINT(bugprone-parent-virtual-call)
    }
};

void makeQtApplication() {
    static int argc = 1;
    static std::string name = infoOf("CFBundleExecutable");
    static char* argv[] = {name.data(), nullptr};
    // There is nothing to save, and the login item starts the program with the session: a session
    // manager that restarted it as well would start it twice.
    QApplication::setAttribute(Qt::AA_DisableSessionManager);
    // Never deleted: the process ends with it, and with the windows and icons that hang on it.
    new Toolkit(argc, argv);
    // As panels and assistive technology call it. A display name would stand in every title too.
    QApplication::setApplicationName(QString::fromStdString(infoOf("CFBundleName")));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setDesktopFileName(QString::fromStdString(infoOf("CFBundleIdentifier")));
    // A drag counts by every point that the pointer passed.
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    dressWindows();
    keepPopupsInFront();
    offerWidgetsToAssistiveTechnology();
}

} // namespace

const QProcessEnvironment& foundEnvironment() {
    static const auto environment = QProcessEnvironment::systemEnvironment();
    return environment;
}

NSApplication& NSApplication::sharedApplication() {
    if (!NSApp) NSApp = new NSApplication;
    return *NSApp;
}

NSApplication::NSApplication() {
    harden();
    foundEnvironment();
    settleSessionBus();
    connectToWindowServer();
    makeQtApplication();
    Session& session = Session::current();
    session.attach();
    session.displays().onChanged = [] {
        NSNotificationCenter::defaultCenter().postNotificationName(
            NSApplicationDidChangeScreenParametersNotification, nullptr);
    };
    session.windows().onCompositingChanged = [] {
        for (NativeWindow* window : NativeWindow::all())
            window->checkForm();
    };
    watchSleep();
    watchQuitSignals();
    NSRunningApplication::currentApplication(); // From here on other instances see this one.
}

void NSApplication::run() {
    if (const auto delegate = m_delegate.lock())
        delegate->applicationDidFinishLaunching(
            NSNotification(NSApplicationDidFinishLaunchingNotification, nullptr));
    QApplication::exec();
    for (NativeWindow* window : NativeWindow::all())
        window->orderOut(); // One that has the keyboard gives it back.
}

void NSApplication::reopen() {
    const auto windows = QGuiApplication::topLevelWindows();
    const bool hasVisibleWindows = std::ranges::any_of(windows, &QWindow::isVisible);
    if (const auto delegate = m_delegate.lock())
        delegate->applicationShouldHandleReopen(*this, hasVisibleWindows);
}

void NSApplication::terminate(const id&) {
    // Queued, so that a request that comes before the loop runs is not lost.
    QMetaObject::invokeMethod(
        qApp, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
}

void NSApplication::activateIgnoringOtherApps(bool flag) {
    if (flag) ContentWindow::activate();
}

NSInteger NSApplication::runModalForWindow(NSWindow& window) {
    QEventLoop loop;
    const QScopedValueRollback innermost(theModalLoop, &loop);
    // To the toolkit it is modal to no other window: it keeps them from input itself.
    dynamic_cast<ContentWindow&>(*window.m_native).setWindowModality(Qt::WindowModal);
    if (!window.isVisible()) window.center();
    window.makeKeyAndOrderFront(nullptr);
    const NSInteger code = loop.exec(); // 0 where the application ends.
    window.orderOut(nullptr);
    return code == 0 ? NSModalResponseAbort : code;
}

void NSApplication::stopModalWithCode(NSInteger code) {
    if (theModalLoop) theModalLoop->exit(static_cast<int>(code));
}

void NSApplication::handle(const NSEvent& event, const std::function<void()>& work) {
    const QScopedValueRollback current(m_currentEvent, std::optional(event));
    work();
}

NSPoint NSEvent::mouseLocation() {
    const auto& event = NSApp->currentEvent();
    return event && event->m_location ? *event->m_location : pointFrom(QCursor::pos());
}
