#include "filewatcher/status/SVNStatusThread.h"

#include "common/CommandQuoting.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/bridge/ToolErrors.h"
#include "filewatcher/bridge/XMLDocument.h"
#include "filewatcher/status/SVNEntry.h"
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

bool declaresDocumentType(cmROStringT document)
{
    // The "<" in front of it is looked at last: it stands everywhere, which would slow the search.
    constexpr cmROStringT declaration = "!DOCTYPE";
    std::size_t found = document.find(declaration);
    while (found != cmROStringT::npos && !document.substr(0, found).ends_with('<'))
        found = document.find(declaration, found + 1);
    return found != cmROStringT::npos;
}

/// The directory's path without links; the path itself when nobody knows that.
cmStringT realPathOf(const cmStringT& directory)
{
    cmStringT real = cmRealPath(directory);
    return real.isEmpty() ? directory : real;
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
    Answer answer = runPass(entry);
    if (!answer.isNoWorkingCopy)
        return answer.status;
    if (m_realPaths.erase(entry.path) == 0 && !cmSamePath(realPathOf(entry.path), entry.path)) {
        m_realPaths.emplace(entry.path, true);
        answer = runPass(entry);
        if (answer.isNoWorkingCopy)
            m_realPaths.erase(entry.path);
    }
    return answer.status;
}

SVNStatusThread::Answer SVNStatusThread::runPass(const WatchEntry& entry)
{
    if (entry.contextFlag)
        return runLocally(entry);
    const SVNShowUpdates showUpdates = m_pace.showUpdates(entry.path, m_clock());
    const std::optional<Answer> asked = showUpdates == SVNShowUpdates::now ? ask(entry) : std::nullopt;
    const Answer answer = asked ? *asked : runLocally(entry);
    if (answer.status != 0)
        return answer;
    if (showUpdates == SVNShowUpdates::afterPass)
        deferEntry(entry);
    tellMissingAnswer(m_pace.missingAnswer(entry.path));
    return answer;
}

SVNStatusThread::Answer SVNStatusThread::runLocally(const WatchEntry& entry)
{
    cmStringT output;
    cmStringT errorOutput;
    const std::int32_t status = svnStatusForItem(entry, output, errorOutput);
    return status != 0 ? Answer{status} : readAnswer(entry, output, errorOutput, true);
}

std::optional<SVNStatusThread::Answer> SVNStatusThread::ask(const WatchEntry& entry)
{
    SVNQuestion question(entry, silenceLimitMs, m_clock, toolControl());
    startQuestion(question);
    while (question.advance()) {
    }
    const Answer answer = conclude(question, true);
    // When the server does not answer, the output breaks off. The local command needs no server.
    return answer.status == statusPassFailed && !answer.isNoWorkingCopy ? std::nullopt : std::optional(answer);
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
    } catch (const std::exception& failure) {  // out of memory, say: the questions begin again
        endIdleWork();
        debugLog("SVNStatusThread::advanceIdleWork", __LINE__, failure.what());
        return false;
    }
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

SVNStatusThread::Answer SVNStatusThread::conclude(SVNQuestion& question, bool appliesLocalStatus)
{
    const cmStringT& directory = question.entry().path;
    CaptureResult result = question.finish();
    const bool wasSilent = result.silent;
    cmStringT errorOutput;
    Answer answer{noteRun(question.commandLine(), std::move(result), errorOutput)};
    if (answer.status == 0)
        answer = readAnswer(question.entry(), question.output(), errorOutput, appliesLocalStatus);
    if (wasSilent)
        m_pace.noteSilence(directory, m_clock(), question.silenceReason());
    else if (answer.status == 0)
        m_pace.noteAnswer(directory);
    else if (answer.isNoWorkingCopy)
        m_pace.forget(directory);
    else if (answer.status != statusStopRequested)
        m_pace.noteRefusal(directory, lastToolError());
    return answer;
}

std::int32_t SVNStatusThread::svnStatusForItem(const WatchEntry& item, cmStringT& output, cmStringT& errorOutput)
{
    const cmROStringT subcommand =
        item.contextFlag ? " info --non-interactive --xml " : " status --non-interactive --xml --verbose ";
    return runTool(commandLine(item, subcommand), spawnPlainCommand, "", output, errorOutput);
}

cmStringT SVNStatusThread::commandLine(const WatchEntry& item, cmROStringT subcommand)
{
    const cmROStringT depth = item.pathFlag || item.contextFlag ? "" : "--non-recursive ";
    const bool named = !m_realPaths.contains(item.path);
    return cmCat(quotedProgram()) + subcommand + depth + pathArgument(named ? item.path : realPathOf(item.path));
}

SVNStatusThread::Answer SVNStatusThread::readAnswer(const WatchEntry& item, const cmStringT& output, cmROStringT errorOutput,
                                                    bool appliesLocalStatus)
{
    if (hasSvnError(errorOutput))
        return {statusPassFailed};
    if (isStopping())
        return {statusStopRequested};
    return parseSvnStatus(item, output, item.contextFlag ? "" : errorOutput, appliesLocalStatus);
}

SVNStatusThread::Answer SVNStatusThread::parseSvnStatus(const WatchEntry& item, const cmStringT& output, cmROStringT warnings,
                                                        bool appliesLocalStatus)
{
    if (declaresDocumentType(output))  // the client writes no entities of its own
        return {failPass("the client's answer declares a document type")};
    XMLDocument document(output);
    const cmArray<std::int32_t> nodes = document.isLoaded() ? document.select("/status/target/entry") : cmArray<std::int32_t>();
    if (!document.isLoaded() || (nodes.empty() && !warnings.empty())) {  // a working copy has at least one entry, for itself
        const bool whole = document.isLoaded();
        document.close();
        // A whole answer without an entry comes with a warning that says why, such as "is not a working copy".
        return {whole ? statusPassFailed : failPass("the client's answer is incomplete"),
                whole && warnings.find("W155007") != cmROStringT::npos};
    }
    const bool serverAnswered = !document.select("/status/target/against").empty();
    std::optional<WatchedSpelling> spelling;
    if (m_realPaths.contains(item.path))
        spelling.emplace(item.path, realPathOf(item.path));
    bool changed = false;
    std::int32_t status = 0;
    SVNEntry entry;
    for (const std::int32_t node : nodes) {
        if (isStopping()) {
            status = statusStopRequested;
            break;
        }
        readSvnEntry(document, node, entry);
        if (!cmIsAbsolutePath(entry.path))  // the watched path is absolute, so are those of its files
            continue;
        const tamarin::TMString path(spelling ? spelling->respell(entry.path) : entry.path);
        const TXVCRECORD before = readVCRecord(path);
        TXVCRECORD record = before;
        bool write = appliesLocalStatus && applyLocalStatus(entry, record);
        write |= applyRepositoryStatus(entry, serverAnswered, record);
        if (!write)
            continue;
        record.tool = tool().number;
        txVCSetRecord(path, record);
        changed |= !haveSameStatus(before, record);
    }
    document.close();
    if (changed)
        txVCStatusChanged();
    return {status};
}
