#pragma once

#include <csignal>

#include <sys/resource.h>

/// While it lives, no file of this process can grow beyond a few bytes. Nothing may be printed.
class FullDisk {
public:
    FullDisk() {
        getrlimit(RLIMIT_FSIZE, &m_usual);
        const rlimit tight = {10, m_usual.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_usual);
        std::signal(SIGXFSZ, m_usualAction);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_usual = {};
    void (*const m_usualAction)(int) = std::signal(SIGXFSZ, SIG_IGN);
};
