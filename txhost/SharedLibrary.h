#pragma once

#include "common/cmString.h"

/// A dynamic library, loaded while the object lives. For one thread at a time.
class SharedLibrary {
public:
    SharedLibrary() = default;
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    ~SharedLibrary() { unload(); }

    /// Loads the library `name` ("filewatcher") from the folder of this program. Null on success, else the reason.
    cmStringT load(cmROStringT name);
    /// The exported function, or null.
    template <class Function>
    Function* function(const char* name) const
    {
        return reinterpret_cast<Function*>(address(name));
    }
    void unload();

private:
    using AnyFunction = void (*)();
    AnyFunction address(const char* name) const;

    void* m_handle = nullptr;
};
