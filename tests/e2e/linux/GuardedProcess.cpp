#include "e2e/GuardedProcess.h"

#include <sys/prctl.h>

#include <csignal>

void GuardedProcess::setupChildProcess() {
    // In the child, before it becomes the other program.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}
