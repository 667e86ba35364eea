// Linked into the program where it has sanitizers: what these ask it for.
#include <sys/prctl.h>

// The program is closed to debuggers. At its end it opens, for the search for leaks looks at it as
// one.
[[gnu::destructor]] static void open() { prctl(PR_SET_DUMPABLE, 1); }

// They are looked up by name.
#pragma GCC visibility push(default)
extern "C" {
const char* __ubsan_default_options() { return "print_stacktrace=1"; }
const char* __lsan_default_options() { return "print_suppressions=0"; }
/// The tables that it is configured with, once a process.
const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
}
