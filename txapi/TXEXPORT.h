#pragma once

// Export and import attributes. TXAPI marks the editor's services, TXMODULE_API the classes TMString and TMIterator, of which
// each library has a copy. TXAPI_BUILD is defined while the editor's library is built; on Windows txapi.def exports its
// services, with their ordinals. TXMODULE_BUILD is defined while a library is built that exports its copy of the classes.
#if defined(_WIN32)
#define TX_EXPORTED __declspec(dllexport)
#define TX_IMPORTED __declspec(dllimport)
#else
#define TX_EXPORTED __attribute__((visibility("default")))
#define TX_IMPORTED
#endif

#if !defined(TXAPI_BUILD)
#define TXAPI TX_IMPORTED
#elif defined(_WIN32)
#define TXAPI
#else
#define TXAPI TX_EXPORTED
#endif

/// Marks what the editor's library exports for its host besides the services.
#if defined(TXAPI_BUILD)
#define EDITOR_API TX_EXPORTED
#else
#define EDITOR_API TX_IMPORTED
#endif

#if defined(TXMODULE_BUILD)
#define TXMODULE_API TX_EXPORTED
#else
#define TXMODULE_API
#endif
