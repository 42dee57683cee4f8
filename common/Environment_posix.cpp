#include "common/Environment.h"

#include <unistd.h>

Environment hostEnvironment()
{
    Environment environment;
    for (char** variable = environ; variable && *variable; ++variable)
        environment.push_back(*variable);
    return environment;
}
