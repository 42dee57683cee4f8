#pragma once

/// Loads the module and lets it register its functions. It stays loaded. Returns false on failure.
bool loadModule(const char* path);
