#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

/// Has a process write without end, kills it at any moment and looks at what it leaves; a hundred
/// times over, which is a thousand writes and more.
template <class Write, class Look> void killTheWriter(const Write& write, const Look& look) {
    std::srand(1);
    for (int i = 0; i < 100; ++i) {
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        if (writer == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            for (;;)
                write();
        }
        usleep(static_cast<useconds_t>(std::rand() % 4000));
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        look();
    }
}
