// What the application sets up once, as it comes to life.
#pragma once

#include <QProcessEnvironment>

#include <functional>
#include <string>

/// For programs that this one starts: it sets some variables for its own libraries alone.
const QProcessEnvironment& foundEnvironment();

/// Logs in at a bus and out again, in a thread of its own, which then tells whether the bus let it.
/// Who logs in at a bus that takes calls and never answers waits for it half a minute or for good.
void probeBus(const std::string& address, std::function<void(bool)> tell);

/// Settles which session bus the libraries of this process go to: the one that the environment
/// names, else the user's own. None, if that one takes calls and then does not answer.
void settleSessionBus();

/// Lets covers rest while the machine sleeps, and while there are some has its sleep wait for that.
/// Goes to the system bus for the first of them, waits for nothing, and without a bus or logind
/// does nothing.
void watchSleep();

/// Ends the application after a SIGTERM, SIGINT or SIGHUP.
void watchQuitSignals();

/// Windows look light or dark from now on: as the desktop prefers, else as the toolkit found it.
void dressWindows();

/// Puts menus and tool tips above all windows of the program, whichever they belong to.
void keepPopupsInFront();

/// Assistive technology hears what widgets say of themselves (Accessible).
void offerWidgetsToAssistiveTechnology();
