#pragma once

#include <QCoreApplication>

#include <string>

namespace WindowServer {

/// The text of WM_CLASS: which window it is, and the program, as it is started.
inline std::string windowClass(const std::string& instance) {
    return instance + '\0' + QCoreApplication::arguments().value(0).toStdString() + '\0';
}

} // namespace WindowServer
