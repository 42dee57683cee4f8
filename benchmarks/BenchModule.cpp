#include "benchmarks/BenchModule.h"

#include "benchmarks/Measurement.h"
#include "common/ChildProcess.h"
#include "filewatcher/txDllInit.h"

#include <chrono>

namespace {

constexpr std::int32_t outputLimit = 64 * 1024 * 1024;
constexpr std::int32_t passLimitMs = 120'000;

}  // namespace

BenchModule::BenchModule(const std::string& tool, std::int32_t type) : m_tool(cmROStringT(tool)), m_type(type)
{
    const TXVCTOOL& known = type == gitType ? txVCToolGit : txVCToolSVN;
    m_editor.defineMacro(known.exePathMacro, [this] { return m_tool; });
    m_editor.setSetting(known.intervalSetting, 5);
    m_editor.setSetting(known.showFileStatusSetting, 1);
    m_editor.setSetting(txVCMaxOutputSetting, outputLimit);
    EditorObserver observer;
    observer.passBegan = [this](const cmStringT&) { m_begun = true; };
    observer.statusChanged = [this] { m_changed = true; };
    observer.passEnded = [this](const cmStringT&, std::int32_t status) {
        ++m_ended;
        if (m_status == 0)
            m_status = status;
    };
    m_editor.setObserver(observer);
    if (txDllInit() != 0)
        throw BenchError("the module could not register its functions");
}

BenchModule::~BenchModule()
{
    m_editor.call("filewatcher_stop_async_work", {});
}

std::int32_t BenchModule::call(cmROStringT name, const cmArray<CallArgument>& arguments)
{
    const CallResult result = m_editor.call(name, arguments);
    if (!result.found)
        throw BenchError(result.error.c_str());
    return result.number.value_or(0);
}

void BenchModule::addPath(const std::string& path)
{
    forgetPass();
    queue(path);
}

void BenchModule::queue(const std::string& path)
{
    call("filewatcherAddPath", {cmStringT(cmROStringT(path)), m_type, 1});
}

void BenchModule::statusPasses(const std::vector<std::string>& paths)
{
    forgetPass();
    for (const std::string& path : paths)
        queue(path);
    // When there are changes the module notifies the editor of them after the end of the last pass.
    const auto isComplete = [&] {
        return m_status != 0 || (m_ended == paths.size() && (m_changed || m_editor.records().empty()));
    };
    if (!m_editor.runUntil(isComplete, passLimitMs))
        throw BenchError("no status pass over " + paths.back());
    if (m_status != 0)
        throw BenchError("a status pass ended with " + std::to_string(m_status));
}

void BenchModule::waitFor(const std::function<bool()>& done, const char* what)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!m_editor.runUntil(done, 1)) {
        if (std::chrono::steady_clock::now() > deadline)
            throw BenchError(std::string("waited in vain for ") + what);
    }
}

std::size_t BenchModule::takeMarkedFiles()
{
    std::size_t count = 0;
    for (const auto& [path, record] : m_editor.records()) {
        if (!record.localStatus.isEmpty())
            ++count;
    }
    m_editor.clearRecords(m_type);
    return count;
}

void BenchModule::forgetPass()
{
    m_begun = m_changed = false;
    m_ended = 0;
    m_status = 0;
}

std::string programInPath(const char* name)
{
    const cmStringT program = findHostProgram(name);
    if (program.isNull())
        throw BenchError(std::string(name) + " was not found in PATH");
    return program.c_str();
}
