#pragma once

/// The loaded library of the module. For the editor's thread.
class Module {
public:
    explicit Module(const char* path);
    /// Unloads it. Nothing of it may be called afterwards.
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    using Function = void (*)();
    /// An exported function, of which the caller knows the type; null when there is none, or no library.
    Function function(const char* name) const;

private:
    void* m_library;
};
