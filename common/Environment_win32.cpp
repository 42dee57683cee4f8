#include "common/Environment.h"

#include "common/WideText.h"

#include <windows.h>

#include <cwchar>

Environment hostEnvironment()
{
    Environment environment;
    wchar_t* block = GetEnvironmentStringsW();
    for (const wchar_t* variable = block; variable && *variable; variable += std::wcslen(variable) + 1)
        environment.push_back(narrowText(variable));
    if (block)
        FreeEnvironmentStringsW(block);
    return environment;
}
