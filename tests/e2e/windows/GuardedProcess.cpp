#include "e2e/GuardedProcess.h"

// Windows knows no such thing before a process has begun; what is left over ends with the machine's session.
void GuardedProcess::setupChildProcess() {}
