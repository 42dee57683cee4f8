#pragma once

// What the rest of the module calls of the Git browser. Its registered functions are declared in RegisteredFunctions.h.

/// Stops the browser's threads and timer, waits for the threads' end, and destroys the model. For the editor's thread.
void stopGitBrowser();
