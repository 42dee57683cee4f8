#pragma once

#include "txapi/TXEXPORT.h"

#include <cstdint>

extern "C" {

/// Registers the module's functions with the editor and does nothing else. The editor calls it once after loading the
/// library, on its own thread. Returns the result of the last registration.
TX_EXPORTED std::int32_t txDllInit();

/// Called before the library is unloaded. Does nothing: the editor stops the threads by calling
/// filewatcher_stop_async_work first.
TX_EXPORTED void txDllExit();

}  // extern "C"
