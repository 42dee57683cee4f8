#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/HostSystem.h"
#include "txhost/LiveDiffCommand.h"
#include "txhost/ScratchRepository.h"
#include "txhost/StatusPoll.h"
#include "txhost/TourReport.h"

#include <optional>
#include <string>

namespace {

/// Uses the module's features on a scratch repository, step by step.
class Tour {
public:
    explicit Tour(const HostOptions& options) : m_report(options.json), m_host(options) {}

    int run()
    {
        m_report.part("module", "the editor loads it and calls its functions; each returns at once");
        m_report.step("it registers its functions", [this] { return module(); });
        m_host.requireTool(gitTool);
        ScratchRepository repository(m_host.programPath(gitTool));
        m_repository = &repository;
        m_host.editor().setDirectory(repository.outsidePath());
        m_report.part("git status", "which files are modified, and nobody waits for git");
        m_report.step("a fresh working copy has none", [this] { return cleanStatus(); });
        m_report.step("an edited file is noticed", [this] { return editedStatus(); });
        m_report.step("a folder by itself, an odd name", [this] { return folderStatus(); });
        m_report.step("a folder in no repository is told apart", [this] { return outsideStatus(); });
        m_report.part("reload", "what other programs write is seen, even if a disk hangs");
        m_report.step("the date of readme.txt", [this] { return reloaded(); });
        m_report.part("git browser", "history and branches appear while git still reads them");
        m_report.step("they fill its tree", [this] { return browsed(); });
        m_report.part("live diff", "the editor can mark what differs from the last commit");
        m_report.step("the committed readme.txt is fetched", [this] { return fetched(); });
        m_report.part("recent files", "what the editor opens is on the desktop's list, too");
        m_report.step("a file joins the list", [this] { return recorded(); });
        m_report.part("control", "the editor decides when there is work, and how much");
        m_report.step("suspended, nothing runs; resumed, it goes on", [this] { return suspended(); });
        m_report.step("stopped, a thread ends; the next path starts one", [this] { return stopped(); });
        m_report.step("a tool that writes too much is switched off", [this] { return limited(); });
        return m_report.end();
    }

private:
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

    TourOutcome module()
    {
        const std::size_t count = m_host.editor().prototypes().size();
        return {count == 25, cmROStringT(std::to_string(count))};
    }

    TourOutcome cleanStatus()
    {
        const Round round = poll(m_repository->path());
        return {round.finished && !round.failure && !round.isOutside && round.files.empty(), m_repository->path(), false};
    }

    /// Succeeds when a round over `directory` finds that `name` is modified and nothing else.
    TourOutcome onlyModified(const cmStringT& directory, cmROStringT name)
    {
        const Round round = poll(directory);
        const cmStringT path = cmJoinPath(m_repository->path(), cmNativeSeparators(name));
        const bool found = round.finished && round.files.size() == 1 && round.files.begin()->second.path == path
                           && round.files.begin()->second.local == cmArray<cmStringT>{"mod"};
        return {found, cmStringT(cmCat(name) + (found ? "" : " was not found"))};
    }

    TourOutcome editedStatus()
    {
        m_repository->writeFile("readme.txt", "first line\nsecond line\n");
        return onlyModified(m_repository->path(), "readme.txt");
    }

    TourOutcome folderStatus()
    {
        constexpr cmROStringT name = "docs & notes/\xC3\xBC"
                                     "bersicht.txt";
        m_repository->writeFile(std::string(name), "another line\n");
        return onlyModified(cmJoinPath(m_repository->path(), "docs & notes"), name);
    }

    TourOutcome outsideStatus()
    {
        const Round round = poll(m_repository->outsidePath());
        return {round.finished && round.isOutside && round.files.empty(), ""};
    }

    TourOutcome reloaded()
    {
        const cmStringT path = cmJoinPath(m_repository->path(), "readme.txt");
        const FileDates dates = askFileDates(m_host, {path}, 2000);
        const auto date = dates.known.find(path);
        if (date == dates.known.end())
            return {false, "no date"};
        return {date->second.time == cmReadFileItem(path).modified, fileTimeText(date->second.time)};
    }

    TourOutcome browsed()
    {
        Browser browser(m_host, m_repository->path(), {});
        const auto isShown = [this] { return m_host.editor().tree().size() == 2; };
        const bool loaded = browser.waitFor([] { return false; }) && m_host.editor().runUntil(isShown, 5000);
        const cmStringT name = browser.branchName(0);
        return {loaded && !name.isEmpty() && browser.graphWidth() == 1,
                cmStringT(cmCat(name) + ": " + std::to_string(m_host.editor().tree().size()) + " rows")};
    }

    TourOutcome fetched()
    {
        const LiveDiffFile file = fetchLiveDiff(m_host, cmJoinPath(m_repository->path(), "readme.txt"), false, {});
        return {!file.failure && cmReadFileItem(file.cacheFile).size == ScratchRepository::committedSize, file.cacheFile, false};
    }

    TourOutcome recorded()
    {
        const cmStringT list = redirectRecentList(m_repository->outsidePath());
        m_host.call("_RecentFilesAdd", {cmJoinPath(m_repository->path(), "readme.txt")});
        m_host.call("_RecentFilesProcessPending", {});
        const bool taken = isOnRecentList(cmJoinPath(m_repository->path(), "readme.txt"));
        return {taken, list.isNull() ? cmStringT("handed to the shell") : list, list.isNull()};
    }

    TourOutcome suspended()
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
        return {quiet && resumed, quiet ? "" : "a pass ran while suspended"};
    }

    TourOutcome stopped()
    {
        m_host.call("filewatcherStop", {gitTool.number});
        const Round round = poll(m_repository->path());
        return {round.finished && round.files.size() == 2, ""};
    }

    TourOutcome limited()
    {
        m_host.call("filewatcherStop", {gitTool.number});
        m_host.editor().setSetting(txVCMaxOutputSetting, 10);
        const Round round = poll(m_repository->path());
        m_host.call("filewatcherAddPath", {m_repository->path(), gitTool.number, 1});
        const bool off = m_host.editor().setting(gitTool.showFileStatusSetting) == 0;
        return {round.failure && round.failure->code == -6657 && off, "def_git_show_file_status is 0 now", false};
    }

    TourReport m_report;
    Host m_host;
    ScratchRepository* m_repository = nullptr;
};

}  // namespace

int runTour(const HostOptions& options)
{
    console::catchInterrupts();
    return Tour(options).run();
}
