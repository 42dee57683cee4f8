#pragma once

// What crosses the borders of the libraries. TXAPI_BUILD is defined where the editor's library is built (on Windows
// txapi.def lists what it exports, with the ordinals), TXMODULE_BUILD where a library or program brings its own copy of the
// classes TMString and TMIterator.
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

#if defined(TXMODULE_BUILD)
#define TXMODULE_API TX_EXPORTED
#else
#define TXMODULE_API
#endif
