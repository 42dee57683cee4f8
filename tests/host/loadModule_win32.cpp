#include "tests/host/loadModule.h"

#include <windows.h>

bool loadModule(const char* path)
{
    HMODULE module = LoadLibraryA(path);
    auto* init = module ? reinterpret_cast<void (*)()>(GetProcAddress(module, "txDllInit")) : nullptr;
    return init && reinterpret_cast<int (*)()>(init)() == 0;
}
