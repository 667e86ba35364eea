// No compositor starts for the superuser, so the tests are somebody else's.
#include <QCoreApplication>

#include <grp.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    constexpr uid_t nobody = 65534;
    if (getuid() == 0 && (setgroups(0, nullptr) || setgid(nobody) || setuid(nobody))) return 1;
    prctl(PR_SET_DUMPABLE, 1); // KWin looks at who asks.
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
