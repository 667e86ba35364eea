#pragma once

/// Settles which session bus the libraries of this process go to, before any of them does: the one
/// that the environment names, else the user's own. None, if that one takes connections and then
/// does not answer: each library would wait for it without end.
void settleSessionBus();
