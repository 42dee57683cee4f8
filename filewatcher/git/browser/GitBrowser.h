#pragma once

// The Git browser as the rest of the module sees it; its registered functions stand in RegisteredFunctions.h.

/// Stops and destroys all that the browser has; returns when its threads have ended. For the editor's thread.
void stopGitBrowser();
