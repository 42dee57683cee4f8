#include "Module.h"

#include <windows.h>

// Narrow, as the words of main are.
Module::Module(const char* path) : m_library(LoadLibraryA(path)) {}

Module::~Module()
{
    if (m_library)
        FreeLibrary(static_cast<HMODULE>(m_library));
}

Module::Function Module::function(const char* name) const
{
    return m_library ? reinterpret_cast<Function>(GetProcAddress(static_cast<HMODULE>(m_library), name)) : nullptr;
}
