#pragma once

#include "editor/Editor.h"
#include "filewatcher/txDllInit.h"
#include "tests/TestSupport.h"
#include "txapi/VersionControlTools.h"

#include <gtest/gtest.h>

#include <map>

/// An editor that has initialised the module, with settings for all tools and the real git. Its end stops every thread.
class ModuleTest : public testing::Test {
protected:
    static constexpr std::int32_t svnType = txVCToolSVN.number;
    static constexpr std::int32_t perforceType = txVCToolPerforce.number;
    static constexpr std::int32_t gitType = txVCToolGit.number;

    ModuleTest()
    {
        for (const TXVCTOOL* known : txVCTools) {
            editor.defineMacro(known->exePathMacro, [this] {
                ++macroCalls;
                return cmStringT(cmROStringT(tool));
            });
            editor.setSetting(known->intervalSetting, 5);
            editor.setSetting(known->showFileStatusSetting, 1);
        }
        editor.setSetting(txVCMaxOutputSetting, 1000000);
        EditorObserver observer;
        observer.statusChanged = [this] { ++notifications; };
        observer.passFailed = [this](const cmStringT&, const cmStringT& words) { reason = words.c_str(); };
        observer.passEnded = [this](const cmStringT& path, std::int32_t status) {
            passesEnded.emplace(path.c_str(), status);
            endedPaths.emplace_back(path.c_str());
        };
        editor.setObserver(observer);
        EXPECT_EQ(txDllInit(), 0);
    }
    ~ModuleTest() override
    {
        call("filewatcherSetSuspendState", {0});
        call("filewatcher_stop_async_work", {});
    }

    /// The executable that the editor's macro functions return. A thread that is configured keeps its own.
    void setTool(const std::string& path) { tool = path; }
    std::int32_t call(cmROStringT name, const cmArray<CallArgument>& arguments)
    {
        const CallResult result = editor.call(name, arguments);
        EXPECT_TRUE(result.found) << result.error.c_str();
        return result.number.value_or(0);
    }
    std::int32_t addPath(const std::string& path, std::int32_t type = gitType)
    {
        return call("filewatcherAddPath", {cmStringT(cmROStringT(path)), type, 1});
    }
    /// Runs the editor's loop until a pass over `path` has ended. Returns the status of that pass.
    std::int32_t waitForPass(const std::string& path)
    {
        EXPECT_TRUE(editor.runUntil([&] { return passesEnded.contains(path); }, 20000)) << "no pass over " << path;
        const auto pass = passesEnded.extract(path);
        return pass ? pass.mapped() : 1;
    }
    std::int32_t pass(const std::string& path, std::int32_t type = gitType)
    {
        addPath(path, type);
        return waitForPass(path);
    }
    /// Stops all threads, then runs what they posted to the editor's thread.
    void stopAndRunEvents()
    {
        call("filewatcher_stop_async_work", {});
        editor.runUntil([] { return false; }, 0);
    }
    /// The statuses of a file and its tool, as "LOCAL/REPOSITORY/TOOL".
    std::string record(const std::string& path) const
    {
        const TXVCRECORD record = editor.record(cmROStringT(path)).value_or(TXVCRECORD());
        return record.localStatus.c_str() + ("/" + std::string(record.repositoryStatus.c_str()) + "/")
               + std::to_string(record.tool);
    }
    std::map<std::string, std::string> localStatus() const
    {
        std::map<std::string, std::string> found;
        for (const auto& [path, record] : editor.records()) {
            if (!record.localStatus.isEmpty())
                found[path.c_str()] = record.localStatus.c_str();
        }
        return found;
    }

    Editor editor;
    std::string tool = "git";
    int macroCalls = 0;
    int notifications = 0;
    std::multimap<std::string, std::int32_t> passesEnded;  ///< path and status of passes that nobody has waited for
    std::string reason;                                    ///< why the last pass that gave a reason failed
    Texts endedPaths;                                      ///< the paths of all ended passes, in order
};
