#include "tests/ModuleFixture.h"

#include "filewatcher/txDllInit.h"

ModuleTest::ModuleTest()
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

ModuleTest::~ModuleTest()
{
    call("filewatcherSetSuspendState", {0});
    call("filewatcher_stop_async_work", {});
}

std::int32_t ModuleTest::call(cmROStringT name, const cmArray<CallArgument>& arguments)
{
    const CallResult result = editor.call(name, arguments);
    EXPECT_TRUE(result.found) << result.error.c_str();
    return result.number.value_or(0);
}

std::int32_t ModuleTest::addPath(const std::string& path, std::int32_t type)
{
    return call("filewatcherAddPath", {cmStringT(cmROStringT(path)), type, 1});
}

std::int32_t ModuleTest::waitForPass(const std::string& path)
{
    const auto ended = [&] { return passesEnded.contains(path); };
    EXPECT_TRUE(editor.runUntil(ended, 20000)) << "no pass over " << path;
    if (!ended())
        return 1;
    const std::int32_t status = passesEnded.find(path)->second;
    passesEnded.erase(passesEnded.find(path));
    return status;
}

void ModuleTest::stopAndRunEvents()
{
    call("filewatcher_stop_async_work", {});
    editor.runUntil([] { return false; }, 0);
}

std::int32_t ModuleTest::pass(const std::string& path)
{
    addPath(path);
    return waitForPass(path);
}

std::map<std::string, std::string> ModuleTest::localStatus() const
{
    std::map<std::string, std::string> found;
    for (const auto& [path, record] : editor.records()) {
        if (!record.localStatus.isEmpty())
            found[path.c_str()] = record.localStatus.c_str();
    }
    return found;
}
