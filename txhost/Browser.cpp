#include "txhost/Browser.h"

#include "common/CommandRunner.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/WatchedDirectories.h"

#include <utility>

namespace {

constexpr std::int32_t checkIntervalMs = 10;
constexpr std::int32_t threadNotStarted = 1;
constexpr std::int32_t statusGitFailed = -1;  // for commits also: there are none

/// The function that the module has set at a callback slot.
template <class Function>
Function* callback(const Host& host, std::int32_t slot)
{
    return reinterpret_cast<Function*>(host.editor().callback(slot));
}

}  // namespace

Browser::Browser(Host& host, const cmStringT& repository, const cmStringT& restriction, EditorObserver observer)
    : m_host(host), m_repository(repository)
{
    host.requireTool(gitTool);
    constexpr std::int32_t force = 1;  // an earlier browser may have loaded the same repository
    const std::int32_t status = host.call("_GitGetBranchInfo", {repository, host.programPath(gitTool), force, restriction});
    if (status == threadNotStarted)
        throw HostError(repository, "a thread could not be started, or memory ran out");
    if (status != 0)
        throw HostError(failureOf(status, {}, repository, gitTool.name));
    // The notices of the load wait for the event loop.
    observer.gitLoadEnded = [this](const cmStringT&, std::int32_t part, std::int32_t partStatus, const cmStringT& message) {
        m_ended[part] = {partStatus, message};
    };
    host.editor().setObserver(std::move(observer));
}

Browser::~Browser()
{
    m_host.call("_GitBranchClose", {});
    m_host.editor().setObserver({});
}

bool Browser::waitFor(const std::function<bool()>& done)
{
    for (;;) {
        const bool loading = isLoading();  // asked before done(), which then sees everything that was loaded
        m_host.editor().runUntil([] { return false; }, 0);
        if (console::wasInterrupted())
            return false;
        if (done() || !loading)
            return true;
        m_host.editor().runUntil([] { return console::wasInterrupted(); }, checkIntervalMs);
    }
}

bool Browser::isLoading()
{
    return m_host.call("_GitGetBranchInfoRunning", {}) != 0;
}

LoadReport Browser::report(std::int32_t lastPart)
{
    m_host.editor().runUntil([] { return false; }, 0);
    LoadReport report;
    for (std::int32_t part = txGitLoadBranches; part <= lastPart; ++part) {
        const PartEnd& end = m_ended.try_emplace(part, PartEnd{statusGitFailed, "the load broke off"}).first->second;
        if (end.status == 0)
            continue;
        const bool isSilent = part == txGitLoadCommits && end.status == statusGitFailed && end.message.isEmpty();
        const std::optional<Failure> failure =
            isSilent ? suspectSilence(m_host, m_repository) : failureOf(end.status, end.message, m_repository, gitTool.name);
        report.isEmpty = !failure;
        // When git cannot start, both parts say so.
        if (failure && (report.failures.empty() || report.failures.back().message != failure->message))
            report.failures.push_back(*failure);
    }
    return report;
}

int Browser::reportFailures(std::int32_t lastPart)
{
    const LoadReport ended = report(lastPart);
    for (const Failure& failure : ended.failures)
        printFailure(failure, m_host.options().json);
    if (ended.isEmpty)
        console::printError(cmStringT(cmCat(m_repository) + ": no commits"));
    return ended.failures.empty() ? 0 : 1;
}

std::int32_t Browser::count() const
{
    return callback<std::int32_t()>(m_host, txSlotGitCount)();
}

bool Browser::commit(std::int64_t number, GitCommitInfo& info) const
{
    return callback<std::int32_t(std::int64_t, GitCommitInfo&)>(m_host, txSlotGitCommit)(number, info) == 0;
}

cmArray<cmStringT> Browser::tags(std::int64_t number) const
{
    cmArray<cmStringT> names;
    if (callback<std::int32_t(std::int64_t, cmArray<cmStringT>&)>(m_host, txSlotGitTags)(number, names) != 0)
        throw HostError(m_repository, "the tags of a commit cannot be read");
    return names;
}

bool Browser::graphRow(std::int64_t number, GraphRow& row) const
{
    return callback<std::int32_t(std::int64_t, GraphRow&)>(m_host, txSlotGitGraphRow)(number, row) == 0;
}

std::int32_t Browser::graphWidth() const
{
    return callback<std::int32_t()>(m_host, txSlotGitGraphWidth)();
}

cmStringT Browser::branchName(std::int32_t number)
{
    // Beyond the last branch the module returns "Error". A branch may have that name too, but it has a hash.
    const cmStringT name = m_host.editor().call("_GitGetBranchName", {number}).text;
    return name == "Error" && branchHash(number).isEmpty() ? cmStringT("") : name;
}

cmArray<cmStringT> Browser::branchNames(const GitCommitInfo& info)
{
    cmArray<cmStringT> names;
    for (const std::int64_t number : info.branchNumbers) {
        const cmStringT name = branchName(static_cast<std::int32_t>(number));
        if (!name.isEmpty())
            names.push_back(name);
    }
    return names;
}

cmStringT Browser::branchHash(std::int32_t number)
{
    return m_host.editor().call("_GitGetBranchHash", {number}).text;
}

bool Browser::filter(const std::string& text)
{
    const TXHVAR tree = txHvarAlloc();
    const std::int32_t status = m_host.call("_GitFilterTree", {text.c_str(), CallArgument::variable(tree)});
    txHvarFree(tree);
    if (status < 0)
        throw HostError(failureOf(status, {}, m_repository, gitTool.name));
    return status == 0;
}

int reportInterrupt(const HostOptions& options, const cmStringT& path)
{
    printFailure({Failure::stopped, "interrupted", path}, options.json);
    return 1;
}

std::optional<Failure> suspectSilence(const Host& host, const cmStringT& directory)
{
    cmStringT output("");
    const CaptureResult result =
        captureCommand(cmStringT(cmCat("\"") + host.programPath(gitTool) + "\" rev-parse --git-dir"), spawnScannedCommand,
                       directory, {}, [&output](cmROStringT bytes) { output += bytes; });
    if (result.status != 0)
        return failureOf(result.status, result.failure, directory, gitTool.name);
    if (!output.isEmpty())
        return std::nullopt;
    cmROStringT words = result.errorOutput;
    const cmROStringT first = cmTakeUntil(words, '\n');
    return failureOf(statusGitFailed, first.empty() ? cmStringT("the program says nothing; is it git?") : cmStringT(first),
                     directory, gitTool.name);
}

cmStringT browsedDirectory(const std::string& named)
{
    return watchedDirectory(named, gitTool.name).path;
}
