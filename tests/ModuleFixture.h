#pragma once

#include "editor/Editor.h"
#include "tests/TestSupport.h"
#include "txapi/VersionControlTools.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>

/// An editor that has initialised the module, with settings for all tools and the real git. Its end stops every thread.
class ModuleTest : public testing::Test {
protected:
    static constexpr std::int32_t svnType = txVCToolSVN.number;
    static constexpr std::int32_t perforceType = txVCToolPerforce.number;
    static constexpr std::int32_t gitType = txVCToolGit.number;

    ModuleTest();
    ~ModuleTest() override;

    /// The executable that the editor's macro functions return. A thread that is configured keeps its own.
    void setTool(const std::string& path) { tool = path; }
    std::int32_t call(cmROStringT name, const cmArray<CallArgument>& arguments);
    std::int32_t addPath(const std::string& path, std::int32_t type = gitType);
    /// Runs the editor's loop until a pass over `path` has ended. Returns the status of that pass.
    std::int32_t waitForPass(const std::string& path);
    /// Stops all threads, then runs what they posted to the editor's thread.
    void stopAndRunEvents();
    /// Adds the path and waits for its pass.
    std::int32_t pass(const std::string& path);
    /// Every path that has a local status, with that status.
    std::map<std::string, std::string> localStatus() const;

    Editor editor;
    std::string tool = "git";
    int macroCalls = 0;
    int notifications = 0;
    std::multimap<std::string, std::int32_t> passesEnded;  ///< path and status of passes that nobody has waited for
    std::string reason;                                    ///< why the last pass that gave a reason failed
    Texts endedPaths;                                      ///< the paths of all ended passes, in order
};
