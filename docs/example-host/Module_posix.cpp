#include "Module.h"

#include <dlfcn.h>

Module::Module(const char* path) : m_library(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {}

Module::~Module()
{
    if (m_library)
        dlclose(m_library);
}

Module::Function Module::function(const char* name) const
{
    return m_library ? reinterpret_cast<Function>(dlsym(m_library, name)) : nullptr;
}
