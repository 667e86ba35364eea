#pragma once

#include <QIcon>

/// The application's own icon, in colour, crisp at any size.
inline QIcon programIcon() { return QIcon(":/Icons/com.vardek.NimbrelLite.svg"); }
