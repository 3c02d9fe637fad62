#include "platform/ProcessEnd.h"

#include <unistd.h>

void ProcessEnd::now(int exitCode)
{
    ::_exit(exitCode);
}
