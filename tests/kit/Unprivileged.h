#pragma once

#include <cstdio>
#include <cstdlib>

#include <grp.h>
#include <sys/prctl.h>
#include <unistd.h>

/// Gives up root's rights for the rest of the process, since root passes every permission check. To
/// be called first in main(); an ordinary user has nothing to give up.
inline void dropPrivileges()
{
    constexpr unsigned nobody = 65534;
    if (::getuid() == 0 &&
        (::setgroups(0, nullptr) != 0 || ::setresgid(nobody, nobody, nobody) != 0 ||
         ::setresuid(nobody, nobody, nobody) != 0)) {
        std::perror("giving up root's rights");
        std::abort();
    }
    // A process that changed its user may not use its own /proc/self/fd otherwise.
    ::prctl(PR_SET_DUMPABLE, 1);
}

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using UnprivilegedApplication = QApplication;
#else
#include <QCoreApplication>
using UnprivilegedApplication = QCoreApplication;
#endif

/// main() of a test that runs without privileges.
#define UNPRIVILEGED_TEST_MAIN(TestClass)                                                          \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        dropPrivileges();                                                                          \
        UnprivilegedApplication application(argc, argv);                                           \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
