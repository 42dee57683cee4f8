#include "filewatcher/status/SVNStatusThread.h"

#include "common/CommandQuoting.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/bridge/ToolErrors.h"
#include "filewatcher/status/SVNAnswer.h"
#include "filewatcher/status/VCRecord.h"
#include "filewatcher/status/WatchedSpelling.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

namespace {

/// How long the client may write nothing while it asks the server.
constexpr std::uint32_t silenceLimitMs = 15000;
constexpr std::uint32_t lateSilenceLimitMs = 120000;  // of a directory that was silent before

/// How many questions go on at a time after the passes, so that a silent server does not keep the others waiting.
constexpr std::size_t lateQuestionLimit = 4;

/// The path as a quoted argument. The client reads what follows the last "@" of a path as a revision, so a path that holds one
/// gets an empty revision at its end.
cmStringT pathArgument(const cmStringT& path)
{
    cmStringT argument(cmWithoutTrailingSeparator(path));
    if (argument.view().find('@') != cmROStringT::npos)
        argument += '@';
    return inDoubleQuotes(argument);
}

/// The directory's path without links; the path itself when nobody knows that.
cmStringT realPathOf(const cmStringT& directory)
{
    cmStringT real = cmRealPath(directory);
    return real.isEmpty() ? directory : real;
}

/// The nearest folder on the way up from `directory` that holds the client's data; empty when there is none.
cmROStringT workingCopyRoot(cmROStringT directory)
{
    for (cmROStringT folder = directory, below; folder != below; folder = cmDirectoryOf(folder)) {
        if (cmIsDirectory(cmJoinPath(folder, ".svn")))
            return folder;
        below = folder;
    }
    return {};
}

/// The path by which the client gets the directory. It looks for the working copy in the folders that the path names, so it does
/// not find the one that a link leads into. There the real path serves.
cmStringT clientPath(const cmStringT& directory)
{
    const cmStringT real = realPathOf(directory);
    if (cmSamePath(real, directory))
        return directory;
    const cmROStringT root = workingCopyRoot(directory);
    const cmStringT holder(cmDirectoryOf(root));  // the root itself may be a link
    cmROStringT below;
    const bool hasNoLink =
        !root.empty() && cmRelativePath(directory, holder, below) && cmSamePath(cmJoinPath(realPathOf(holder), below), real);
    return hasNoLink ? directory : real;
}

bool haveSameStatus(const TXVCRECORD& a, const TXVCRECORD& b)
{
    return a.localStatus == b.localStatus && a.repositoryStatus == b.repositoryStatus && a.tool == b.tool;
}

}  // namespace

std::int32_t SVNStatusThread::processEntry(const WatchEntry& entry)
{
    if (quotedProgram().isEmpty())
        return 0;
    if (entry.contextFlag)
        return runLocally(entry).status;
    const SVNShowUpdates showUpdates = m_pace.showUpdates(entry.path, m_clock());
    const std::optional<Outcome> asked = showUpdates == SVNShowUpdates::now ? ask(entry) : std::nullopt;
    const Outcome outcome = asked ? *asked : runLocally(entry);
    if (outcome.status != 0)
        return outcome.status;
    if (showUpdates == SVNShowUpdates::afterPass)
        deferEntry(entry);
    tellMissingAnswer(m_pace.missingAnswer(entry.path));
    return 0;
}

SVNStatusThread::Outcome SVNStatusThread::runLocally(const WatchEntry& entry)
{
    SVNAnswer answer;
    cmStringT errorOutput;
    const std::int32_t status = svnStatusForItem(entry, answer, errorOutput);
    return status != 0 ? Outcome{status} : readAnswer(entry, answer, errorOutput, true);
}

std::optional<SVNStatusThread::Outcome> SVNStatusThread::ask(const WatchEntry& entry)
{
    SVNQuestion question(entry, silenceLimitMs, m_clock, toolControl());
    startQuestion(question);
    while (question.advance()) {
    }
    const Outcome outcome = conclude(question, true);
    // When the server does not answer, the output breaks off. The local command needs no server.
    return outcome.status == statusPassFailed && !outcome.isNoWorkingCopy ? std::nullopt : std::optional(outcome);
}

bool SVNStatusThread::advanceIdleWork()
{
    try {
        std::erase_if(m_lateQuestions, [this](const auto& question) { return !isDeferred(question->entry().path); });
        beginLateQuestions();
        if (m_lateQuestions.empty())
            return false;
        advanceLateQuestion();
        return true;
    } catch (const std::exception& failure) {  // out of memory, say: the questions come again
        endIdleWork();
        debugLog("SVNStatusThread::advanceIdleWork", __LINE__, failure.what());
        return false;
    }
}

void SVNStatusThread::endIdleWork()
{
    for (const auto& question : m_lateQuestions)
        removeDeferred(question->entry().path);  // it was asked, and comes again when it is due
    m_lateQuestions.clear();
}

bool SVNStatusThread::findLateEntry(WatchEntry& entry)
{
    const auto waits = [this](const WatchEntry& deferred) {
        return std::none_of(m_lateQuestions.begin(), m_lateQuestions.end(),
                            [&](const auto& question) { return question->entry().path == deferred.path; });
    };
    return findDeferred([&](const WatchEntry& deferred) { return !m_pace.wasSilent(deferred.path) && waits(deferred); }, entry)
           || findDeferred(waits, entry);
}

void SVNStatusThread::beginLateQuestions()
{
    WatchEntry entry;
    while (m_lateQuestions.size() < lateQuestionLimit && !m_pace.isSilentMinute(m_clock()) && findLateEntry(entry)) {
        const std::uint32_t limit = m_pace.wasSilent(entry.path) ? lateSilenceLimitMs : silenceLimitMs;
        m_lateQuestions.push_back(std::make_unique<SVNQuestion>(entry, limit, m_clock, toolControl()));
        startQuestion(*m_lateQuestions.back());
    }
}

void SVNStatusThread::advanceLateQuestion()
{
    std::unique_ptr<SVNQuestion> question = std::move(m_lateQuestions.front());
    m_lateQuestions.pop_front();
    if (question->advance()) {
        m_lateQuestions.push_back(std::move(question));
        return;
    }
    removeDeferred(question->entry().path);
    conclude(*question, false);
}

void SVNStatusThread::startQuestion(SVNQuestion& question)
{
    m_pace.noteAsked(question.entry().path, m_clock());
    question.start(commandLine(question.entry(), " status --non-interactive --xml --show-updates --verbose "));
}

SVNStatusThread::Outcome SVNStatusThread::conclude(SVNQuestion& question, bool appliesLocalStatus)
{
    const cmStringT& directory = question.entry().path;
    CaptureResult result = question.finish();
    const bool wasSilent = result.silent;
    cmStringT errorOutput;
    Outcome outcome{noteRun(question.commandLine(), std::move(result), errorOutput)};
    if (outcome.status == 0)
        outcome = readAnswer(question.entry(), question.answer(), errorOutput, appliesLocalStatus);
    if (wasSilent)
        m_pace.noteSilence(directory, m_clock(), question.silenceReason());
    else if (outcome.status == 0)
        m_pace.noteAnswer(directory);
    else if (outcome.status != statusStopRequested && !outcome.isNoWorkingCopy)
        m_pace.noteRefusal(directory, lastToolError());
    return outcome;
}

std::int32_t SVNStatusThread::svnStatusForItem(const WatchEntry& item, SVNAnswer& answer, cmStringT& errorOutput)
{
    const cmROStringT subcommand =
        item.contextFlag ? " info --non-interactive --xml " : " status --non-interactive --xml --verbose ";
    const CaptureSink read = [&answer](cmROStringT bytes) { answer.append(bytes); };
    return runTool(commandLine(item, subcommand), spawnPlainCommand, "", read, errorOutput);
}

cmStringT SVNStatusThread::commandLine(const WatchEntry& item, cmROStringT subcommand)
{
    const cmROStringT depth = item.pathFlag || item.contextFlag ? "" : "--non-recursive ";
    return cmCat(quotedProgram()) + subcommand + depth + pathArgument(clientPath(item.path));
}

SVNStatusThread::Outcome SVNStatusThread::readAnswer(const WatchEntry& item, SVNAnswer& answer, cmROStringT errorOutput,
                                                     bool appliesLocalStatus)
{
    if (hasSvnError(errorOutput))
        return {statusPassFailed};
    if (isStopping())
        return {statusStopRequested};
    answer.finish();
    if (!answer.problem().isNull())
        return {failPass(answer.problem())};
    // A working copy has at least one entry, for itself. A warning says why there is none, such as "is not a working copy".
    if (answer.entries().empty() && !item.contextFlag && !errorOutput.empty()) {
        const bool isNoWorkingCopy = errorOutput.find("W155007") != cmROStringT::npos;
        if (isNoWorkingCopy)
            m_pace.forget(item.path);
        return {statusPassFailed, isNoWorkingCopy};
    }
    return {updateRecords(item, answer, appliesLocalStatus)};
}

std::int32_t SVNStatusThread::updateRecords(const WatchEntry& item, const SVNAnswer& answer, bool appliesLocalStatus)
{
    std::optional<WatchedSpelling> spelling;
    if (const cmStringT path = clientPath(item.path); path != item.path)
        spelling.emplace(item.path, path);
    bool changed = false;
    bool stopped = false;
    for (const SVNEntry& entry : answer.entries()) {
        stopped = isStopping();
        if (stopped)
            break;
        if (!cmIsAbsolutePath(entry.path))  // the watched path is absolute, so are those of its files
            continue;
        const tamarin::TMString path(spelling ? spelling->respell(entry.path) : entry.path);
        const TXVCRECORD before = readVCRecord(path);
        TXVCRECORD record = before;
        bool write = appliesLocalStatus && applyLocalStatus(entry, record);
        write |= applyRepositoryStatus(entry, answer.serverAnswered(), record);
        if (!write)
            continue;
        record.tool = tool().number;
        txVCSetRecord(path, record);
        changed |= !haveSameStatus(before, record);
    }
    if (changed)
        txVCStatusChanged();
    return stopped ? statusStopRequested : 0;
}
