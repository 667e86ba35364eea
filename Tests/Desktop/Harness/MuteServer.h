#pragma once

#include "Harness/Folder.h"

#include <string>

namespace Harness {

/// A socket that takes connections and never says a word.
class MuteServer {
public:
    MuteServer();
    ~MuteServer();
    MuteServer(const MuteServer&) = delete;
    MuteServer& operator=(const MuteServer&) = delete;

    std::string path() const { return (m_folder.path() / "socket").string(); }

    bool wasCalled() const; ///< Whether anybody has come so far.

private:
    Folder m_folder;
    int m_socket;
};

} // namespace Harness
