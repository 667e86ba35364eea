// What the application sets up once, as it comes to life.
#pragma once

#include <QProcessEnvironment>

#include <functional>
#include <string>

/// The environment as the program found it, for those that it starts. It sets some variables for
/// its own libraries alone.
const QProcessEnvironment& foundEnvironment();

/// Logs in at a bus and out again, in a thread of its own, which then tells whether the bus let it.
/// Who logs in at a bus that takes calls and never answers waits for it half a minute or for good.
void probeBus(const std::string& address, std::function<void(bool)> tell);

/// Settles which session bus the libraries of this process go to, before any of them does: the one
/// that the environment names, else the user's own. None, if that one takes calls and then does not
/// answer.
void settleSessionBus();

/// Hears from logind, on the system bus, that the machine goes to sleep and has woken, and makes it
/// wait with the sleep until `onSleep` has dealt with that. The result is told whether the machine
/// has to wait. Goes to the bus as it is first wanted, waits for nothing, and without a bus or
/// logind does nothing.
std::function<void(bool)> watchSleep(std::function<void(bool)> onSleep);

/// Calls `quit` from the event loop after a SIGTERM, SIGINT or SIGHUP.
void watchQuitSignals(const std::function<void()>& quit);

/// Answers under the bundle identifier on the session bus, where desktops ask an application that
/// runs to show itself. Of several instances the newest one answers. Waits for nothing.
///
/// The request that made the bus start this very process is its launch, and calls nothing.
void answerReopenRequests(std::function<void()> reopen);

/// Windows look light or dark from now on, as the desktop prefers at the moment, as the toolkit's
/// platform looks where no more is told, and light where nothing tells.
void dressWindows();

/// Puts menus and tool tips above all windows of the program, whichever they belong to.
void keepPopupsInFront();

/// Keeps input from the program's windows with a frame while another one of them runs modally. The
/// toolkit's own modality would take in the buttons and the tray's icon, which always work.
void keepInputForModalWindows();

/// Makes known to assistive technology what the toolkit cannot tell of by itself: panels as what
/// their views say that they are, windows, and tabs.
void offerWidgetsToAssistiveTechnology();
