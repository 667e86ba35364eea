// Whether the program starts when the user logs in. The system alone keeps the answer.
#pragma once

namespace LoginItem {

/// Registers the running program, or takes it back. A failure shows in the log alone.
void set(bool on);

} // namespace LoginItem
