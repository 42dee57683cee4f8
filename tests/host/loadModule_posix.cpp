#include "tests/host/loadModule.h"

#include <dlfcn.h>

bool loadModule(const char* path)
{
    void* module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    auto* init = module ? reinterpret_cast<int (*)()>(dlsym(module, "txDllInit")) : nullptr;
    return init && init() == 0;
}
