#pragma once

#include "txapi/TXEXPORT.h"

/// What the stand-in editor's library offers its host, besides the services.
#if defined(TXAPI_BUILD)
#define EDITOR_API TX_EXPORTED
#else
#define EDITOR_API TX_IMPORTED
#endif
