#pragma once

/// Whether the editor has suspended the status threads. For the editor's thread only.
bool isSuspendStateSet();
