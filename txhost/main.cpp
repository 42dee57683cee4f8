#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;

/// CLI11 splits a word in square brackets into a list. It leaves a word alone that begins with this character.
constexpr char bracketGuard = '\x1F';

void removeGuard(std::string& word)
{
    if (word.starts_with(bracketGuard))
        word.erase(0, 1);
}

/// The words of the command line as CLI11 wants them: guarded, the last one first.
std::vector<std::string> guardedWords(std::vector<std::string> words)
{
    for (std::string& word : words) {
        if (word.starts_with('['))
            word.insert(word.begin(), bracketGuard);
    }
    std::reverse(words.begin(), words.end());
    return words;
}

/// Parses the command line and runs the command that it names.
class CommandLineInterface {
public:
    CommandLineInterface()
    {
        m_app.allow_windows_style_options(false);  // a word such as /x is an argument on every system
        m_app.require_subcommand(1);
        m_app.fallthrough();
        m_app.set_version_flag("--version", "txhost " FILEWATCHER_VERSION, "Print the version");
        m_app.add_flag("--json", m_options.json, "One JSON object a line");
        m_app.add_flag("--debug", m_options.debug, "Write the editor's debug log to standard error");
        for (const Tool* tool : allTools) {
            const std::string name = tool->name;
            m_app.add_option("--" + name, m_options.programs[tool->number], "The " + name + " program")->type_name("PATH");
        }
        m_app.add_option("--max-output", m_options.maxStatusOutput, "Bytes that one run of a tool may write")
            ->type_name("BYTES")
            ->check(CLI::Range(1, std::numeric_limits<int>::max()));
        addCommands();
    }

    int run(const std::vector<std::string>& words)
    {
        try {
            m_app.parse(guardedWords(words));
            for (std::string& word : m_words)
                removeGuard(word);
            for (std::string* word : {&m_name, &m_command, &m_log.restriction, &m_log.filter, &m_options.revision})
                removeGuard(*word);
            for (auto& [tool, program] : m_options.programs)
                removeGuard(program);
        } catch (const CLI::ParseError& error) {
            std::ostringstream help;
            std::ostringstream complaint;
            if (m_app.exit(error, help, complaint) != 0) {
                console::printErrorLines(complaint.str());
                return exitUsage;
            }
            console::printLine(cmWithoutLineEnd(help.str()));
            return console::isOutputComplete() ? 0 : exitFailure;
        }
        const int exitCode = runCommand();
        if (console::isReaderGone())  // such as "head": it has what it asked for
            return 0;
        return console::isOutputComplete() ? exitCode : exitFailure;
    }

private:
    /// Runs the command and prints why it could not answer. Returns the exit code.
    int runCommand()
    {
        Failure failure;
        try {
            const int exitCode = m_run();
            if (!console::isDateMissing())
                return exitCode;
            failure.message = "a date could not be converted to local time";
        } catch (const UsageError& error) {
            console::printError(error.what());
            return exitUsage;
        } catch (const HostError& error) {
            failure = error.failure();
        } catch (const std::exception& error) {
            failure.message = error.what();
        }
        printFailure(failure, m_options.json);
        return exitFailure;
    }

    void addCommands()
    {
        command("tour", "Use every feature on a scratch repository", [this] { return runTour(m_options); });
        command("functions", "List the functions that the module registers", [this] { return runFunctions(m_options); });

        CLI::App* call = command("call", "Call one function; variables by reference are JSON",
                                 [this] { return runCall(m_options, m_name, m_words); });
        call->add_option("NAME", m_name, "Its name")->required();
        call->add_option("ARG", m_words, "Its arguments");

        CLI::App* status = command("status", "Show which files are modified", [this] { return runStatus(m_options, m_words); });
        addWorkingCopies(status);

        CLI::App* reload = command("reload", "Show when files changed", [this] { return runReload(m_options, m_words); });
        reload->add_option("FILE", m_words, "Files")->required();
        reload->add_option("--budget", m_options.budgetMs, "Milliseconds that it may take; half of it makes a file slow")
            ->check(CLI::Range(0, 3600000));

        addGitQueries();

        CLI::App* watch = command("watch", "Show status changes and changed files until Ctrl-C",
                                  [this] { return runWatch(m_options, m_words); });
        addWorkingCopies(watch);
        watch->add_option("--interval", m_options.intervalSeconds, "Seconds between two looks")->check(CLI::Range(1, 86400));

        addBrowser();

        CLI::App* liveDiff = command("livediff", "Fetch the committed revision of a file",
                                     [this] { return runLiveDiff(m_options, m_name, m_command, m_background); });
        liveDiff->add_option("FILE", m_name, "The file")->required();
        liveDiff->add_option("--command", m_command, "What writes it to its output, instead of the file's tool");
        liveDiff->add_option("--cache", m_options.cache, "Where the editor keeps it, instead of in your cache")->type_name("DIR");
        liveDiff->add_flag("--background", m_background, "On the module's thread");

        CLI::App* recent = command("recent", "Put files on the system's list of recent documents",
                                   [this] { return runRecent(m_options, m_words); });
        recent->add_option("FILE", m_words, "Files")->required();
    }

    void addGitQueries()
    {
        CLI::App* history =
            command("history", "Show the revisions of a file in Git", [this] { return runHistory(m_options, m_name); });
        history->add_option("FILE", m_name, "The file")->required();
        history->add_option("--rev", m_options.revision, "Where it begins")->type_name("REV");
        history->add_flag("--newest", m_options.newest, "The newest revision alone");
        history->add_flag("--follow", m_options.follow, "Go on beyond renames");
        history->add_flag("--working", m_options.working, "Begin with the working file");

        CLI::App* show = command("show", "Show a commit of a Git repository", [this] { return runShow(m_options, m_name); });
        show->add_option("REPO", m_name, "The repository")->required();
        show->add_option("HASH", m_options.revision, "The commit")->required();

        CLI::App* diff =
            command("diff", "Show what differs in a Git working copy", [this] { return runDiff(m_options, m_name); });
        diff->add_option("REPO", m_name, "The repository")->required();
        diff->add_option("REV", m_options.revision, "A revision, instead of the index and the last commit");
    }

    void addBrowser()
    {
        CLI::App* branches =
            command("branches", "List the branches of a Git repository", [this] { return runBranches(m_options, m_name); });
        branches->add_option("REPO", m_name, "The repository")->required();

        CLI::App* log = command("log", "Show the history of a Git repository with its graph",
                                [this] { return runLog(m_options, m_name, m_log); });
        log->add_option("REPO", m_name, "The repository")->required();
        log->add_option("--max", m_log.rows, "At most so many rows")->check(CLI::Range(1, std::numeric_limits<int>::max()));
        log->add_option("--restrict", m_log.restriction, "What git log is asked for, instead of all branches")->type_name("ARGS");
        log->add_option("--filter", m_log.filter, "Only commits with this in author, subject or hash")->type_name("TEXT");
    }

    void addWorkingCopies(CLI::App* command)
    {
        command->add_option("DIR", m_words, "Directories in working copies, of watch also files")->required();
        command->add_option("--tool", m_options.tool, "Whose they are, instead of finding out")
            ->check(CLI::IsMember(toolNames()));
        command->add_option("--patience", m_options.patienceMs, "Milliseconds until a tool that does not answer is named")
            ->check(CLI::Range(0, 3600000));
        command->add_flag("--updates", m_options.updates, "Show what is newer in the repository, too");
    }

    CLI::App* command(const std::string& name, const std::string& description, std::function<int()> run)
    {
        CLI::App* added = m_app.add_subcommand(name, description);
        added->callback([this, run = std::move(run)] { m_run = run; });
        return added;
    }

    CLI::App m_app{"txhost: a headless Tamarin that loads the filewatcher module and uses it", "txhost"};
    HostOptions m_options;
    std::string m_name;
    LogOptions m_log;
    std::string m_command;
    bool m_background = false;
    std::vector<std::string> m_words;
    std::function<int()> m_run;
};

}  // namespace

int main(int argc, char** argv)
{
    return CommandLineInterface().run(console::start(argc, argv));
}
