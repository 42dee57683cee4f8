#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/HostSystem.h"
#include "txhost/JsonText.h"
#include "txhost/LiveDiffCommand.h"
#include "txhost/ScratchRepository.h"
#include "txhost/StatusPoll.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace {

/// The result of one step.
struct Outcome {
    bool ok;
    cmStringT detail;  ///< what the step found; may be empty
};

/// Uses the module's features on a scratch repository and prints the result and the time of each step.
class Tour {
public:
    explicit Tour(const HostOptions& options) : m_json(options.json), m_host(options) {}

    int run()
    {
        step("module", "loads, registers its functions", [this] { return module(); });
        m_host.requireTool(gitTool);
        ScratchRepository repository(m_host.programPath(gitTool));
        m_repository = &repository;
        m_host.editor().setDirectory(repository.outsidePath());
        step("git status", "a fresh working copy has nothing modified", [this] { return cleanStatus(); });
        step("git status", "an edited file is noticed", [this] { return editedStatus(); });
        step("git status", "a folder by itself, with an odd name", [this] { return folderStatus(); });
        step("git status", "a folder outside any repository", [this] { return outsideStatus(); });
        step("reload", "a file's date is read in the background", [this] { return reloaded(); });
        step("git browser", "branches and commits fill its tree", [this] { return browsed(); });
        step("live diff", "the committed revision is fetched", [this] { return fetched(); });
        step("recent files", "a file joins the system's list", [this] { return recorded(); });
        step("suspend", "nothing runs until it is resumed", [this] { return suspended(); });
        step("stop", "ends the thread; the next path starts one", [this] { return stopped(); });
        step("limit", "too much output switches a tool off", [this] { return limited(); });
        if (console::wasInterrupted())
            console::printInterrupted();
        return m_failures == 0 && !console::wasInterrupted() ? 0 : 1;
    }

private:
    void step(cmROStringT feature, cmROStringT what, const std::function<Outcome()>& body)
    {
        if (console::wasInterrupted())
            return;
        const auto start = std::chrono::steady_clock::now();
        const Outcome outcome = body();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        if (console::wasInterrupted())
            return;
        if (!outcome.ok)
            ++m_failures;
        if (m_json) {
            printJson({{"feature", jsonString(feature)},
                       {"what", jsonString(what)},
                       {"ok", outcome.ok},
                       {"ms", time.count()},
                       {"detail", jsonString(outcome.detail)}});
            return;
        }
        const cmStringT mark =
            outcome.ok ? console::coloured(console::green, "ok    ") : console::coloured(console::red, "FAILED");
        char line[160];
        std::snprintf(line, sizeof line, "  %-11.*s %-44.*s %7.1f ms  ", static_cast<int>(feature.size()), feature.data(),
                      static_cast<int>(what.size()), what.data(), time.count());
        console::printLine(cmStringT(cmCat(mark) + line + console::printable(outcome.detail)));
    }

    /// What one round over a directory has answered.
    struct Round {
        bool finished = false;
        bool isOutside = false;
        std::optional<Failure> failure;
        FileStatuses files;
    };

    Round poll(const cmStringT& directory)
    {
        Round round;
        StatusListener listener;
        listener.passEnded = [&round](const PassAnswer& answer) {
            round.isOutside = answer.isOutside;
            round.failure = answer.failure;
            round.files = answer.files;
        };
        listener.roundEnded = [&round](const Tool&, const FileStatuses&) { round.finished = true; };
        StatusPoll poll(m_host, {WatchedDirectory{directory, gitTool}}, listener);
        poll.start(gitTool);
        poll.runUntil([&round] { return round.finished || console::wasInterrupted(); });
        return round;
    }

    Outcome module()
    {
        const std::size_t count = m_host.editor().prototypes().size();
        return {count == 25, cmROStringT(std::to_string(count) + " functions")};
    }

    Outcome cleanStatus()
    {
        const Round round = poll(m_repository->path());
        return {round.finished && !round.failure && !round.isOutside && round.files.empty(), m_repository->path()};
    }

    /// Succeeds when a round over `directory` finds that `name` is modified and nothing else.
    Outcome onlyModified(const cmStringT& directory, cmROStringT name)
    {
        const Round round = poll(directory);
        const cmStringT path = cmJoinPath(m_repository->path(), cmNativeSeparators(name));
        const bool found = round.finished && round.files.size() == 1 && round.files.begin()->second.path == path
                           && round.files.begin()->second.local == cmArray<cmStringT>{"mod"};
        return {found, cmStringT(cmCat(name) + (found ? " is modified" : " was not found"))};
    }

    Outcome editedStatus()
    {
        m_repository->writeFile("readme.txt", "first line\nsecond line\n");
        return onlyModified(m_repository->path(), "readme.txt");
    }

    Outcome folderStatus()
    {
        constexpr cmROStringT name = "docs & notes/\xC3\xBC"
                                     "bersicht.txt";
        m_repository->writeFile(std::string(name), "another line\n");
        return onlyModified(cmJoinPath(m_repository->path(), "docs & notes"), name);
    }

    Outcome outsideStatus()
    {
        const Round round = poll(m_repository->outsidePath());
        return {round.finished && round.isOutside && round.files.empty(), "reported as outside"};
    }

    Outcome reloaded()
    {
        const cmStringT path = cmJoinPath(m_repository->path(), "readme.txt");
        const FileDates dates = askFileDates(m_host, {path}, 2000);
        const auto date = dates.known.find(path);
        if (date == dates.known.end())
            return {false, "no date"};
        return {date->second.time == cmReadFileItem(path).modified,
                cmStringT(cmCat("readme.txt: ") + fileTimeText(date->second.time))};
    }

    Outcome browsed()
    {
        Browser browser(m_host, m_repository->path(), {});
        const auto isShown = [this] { return m_host.editor().tree().size() == 2; };
        const bool loaded = browser.waitFor([] { return false; }) && m_host.editor().runUntil(isShown, 5000);
        const cmStringT name = browser.branchName(0);
        return {loaded && !name.isEmpty() && browser.graphWidth() == 1,
                cmStringT(cmCat(name) + ": " + std::to_string(m_host.editor().tree().size()) + " rows")};
    }

    Outcome fetched()
    {
        const LiveDiffFile file = fetchLiveDiff(m_host, cmJoinPath(m_repository->path(), "readme.txt"), false, {});
        return {!file.failure && cmReadFileItem(file.cacheFile).size == ScratchRepository::committedSize, file.cacheFile};
    }

    Outcome recorded()
    {
        const cmStringT list = redirectRecentList(m_repository->outsidePath());
        m_host.call("_RecentFilesAdd", {cmJoinPath(m_repository->path(), "readme.txt")});
        m_host.call("_RecentFilesProcessPending", {});
        const bool taken = isOnRecentList(cmJoinPath(m_repository->path(), "readme.txt"));
        return {taken, list.isNull() ? cmStringT("handed to the shell, which does not answer") : list};
    }

    Outcome suspended()
    {
        Editor& editor = m_host.editor();
        int passes = 0;
        EditorObserver observer;
        observer.passEnded = [&passes](const cmStringT&, std::int32_t) { ++passes; };
        editor.setObserver(observer);
        m_host.call("filewatcherSetSuspendState", {1});
        m_host.call("filewatcherAddPath", {m_repository->path(), gitTool.number, 1});
        const bool quiet = !editor.runUntil([&passes] { return passes > 0 || console::wasInterrupted(); }, 300);
        m_host.call("filewatcherSetSuspendState", {0});
        const bool resumed = editor.runUntil([&passes] { return passes == 1 || console::wasInterrupted(); }, 5000);
        editor.setObserver({});
        return {quiet && resumed, quiet ? "the queued path ran afterwards" : "a pass ran while suspended"};
    }

    Outcome stopped()
    {
        m_host.call("filewatcherStop", {gitTool.number});
        const Round round = poll(m_repository->path());
        return {round.finished && round.files.size() == 2, "and a new one took over"};
    }

    Outcome limited()
    {
        m_host.call("filewatcherStop", {gitTool.number});
        m_host.editor().setSetting(txVCMaxOutputSetting, 10);
        const Round round = poll(m_repository->path());
        m_host.call("filewatcherAddPath", {m_repository->path(), gitTool.number, 1});
        const bool off = m_host.editor().setting(gitTool.showFileStatusSetting) == 0;
        return {round.failure && round.failure->code == -6657 && off, "def_git_show_file_status is 0 now"};
    }

    bool m_json;
    Host m_host;
    ScratchRepository* m_repository = nullptr;
    int m_failures = 0;
};

}  // namespace

int runTour(const HostOptions& options)
{
    console::catchInterrupts();
    return Tour(options).run();
}
