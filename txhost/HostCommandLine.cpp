#include "txhost/HostCommandLine.h"

#include "txhost/LogRestriction.h"

#include <limits>
#include <utility>

namespace {

CLI::Range atLeast(int least, int most = std::numeric_limits<int>::max())
{
    return {least, most};
}

/// CLI::Range takes "nan", and complains of the range of what is no number.
std::string complaintOfNumber(const std::string& word)
{
    return word.find_first_not_of("0123456789.-") == std::string::npos ? std::string() : "Not a number: " + word;
}

std::string complaintOfEmptyWord(const std::string& word)
{
    return word.empty() ? "An empty word is none" : std::string();
}

}  // namespace

HostCommandLine::HostCommandLine() : CommandParser("txhost: a headless Tamarin that loads the filewatcher module and uses it")
{
    addCommand("tour", "Use every feature on a scratch repository", [this] { return runTour(m_options); });
    addStatusAndWatch();
    addBrowser();
    addFullScreen();
    addGitQueries();
    addFileCommands();
    addModuleCommands();
}

void HostCommandLine::addStatusAndWatch()
{
    const auto named = [this] { return m_words.empty() ? std::vector<std::string>{"."} : m_words; };
    CLI::App* status =
        addCommand("status", "Show which files are modified", [this, named] { return runStatus(m_options, named(), m_status); });
    addWorkingCopies(status, "Directories in working copies");
    status->add_flag("--exit-code", m_status.exitCode, "End with 3 when something is modified, unless a failure ends it with 1");

    status->add_flag("--recurse", m_status.recurse, "Show all repositories below DIR, also those with nothing modified");

    CLI::App* watch = addCommand("watch", "Show status changes and changed files until Ctrl-C",
                                 [this, named] { return runWatch(m_options, named(), m_command); });
    addWorkingCopies(watch, "Directories in working copies, and files");
    watch
        ->add_option("--exec", m_command,
                     "What the shell runs on a change, with the changed paths in its input, each ended by NUL")
        ->type_name("COMMAND")
        ->check(&complaintOfEmptyWord);
    watch->add_option("--interval", m_options.intervalSeconds, "Seconds between two looks")
        ->type_name("SECONDS")
        ->check(&complaintOfNumber)
        ->check(CLI::Range(0.2, 86400.0))
        ->capture_default_str();
}

void HostCommandLine::addWorkingCopies(CLI::App* command, const std::string& description)
{
    command->add_option("DIR", m_words, description)->type_name("TEXT")->default_str(".");
    command->add_option("--tool", m_options.tool, "Whose they are, instead of finding out")
        ->type_name("TOOL")
        ->check(CLI::IsMember(toolNames()))
        ->default_str("the tool whose mark is found");
    command->add_option("--patience", m_options.patienceMs, "Milliseconds until a tool that does not answer is named")
        ->type_name("MS")
        ->check(&complaintOfNumber)
        ->check(atLeast(0, 3600000))
        ->capture_default_str();
    command->add_option("--max-output", m_options.maxStatusOutput, "Bytes that one run of a tool may write")
        ->type_name("BYTES")
        ->check(&complaintOfNumber)
        ->check(atLeast(1))
        ->capture_default_str();
    command->add_flag("--updates", m_options.updates, "Show what is newer in the repository, too");
}

void HostCommandLine::addRepository(CLI::App* command, const std::string& description)
{
    command->add_option("REPO", m_repository, description)->capture_default_str()->check(&complaintOfEmptyWord);
}

void HostCommandLine::addGitQueries()
{
    CLI::App* history =
        addCommand("history", "Show the revisions of a file in Git", [this] { return runHistory(m_options, m_name); });
    history->add_option("FILE", m_name, "The file, or a directory")->required();
    history->add_option("--rev", m_options.revision, "Where it begins")
        ->type_name("REV")
        ->default_str("HEAD")
        ->check(&complaintOfEmptyWord);
    history->add_flag("--newest", m_options.newest, "The newest revision alone");
    history->add_flag("--follow", m_options.follow, "Go on beyond renames");
    history->add_flag("--working", m_options.working, "Begin with the working file");

    m_show = addCommand("show", "Show a commit of a Git repository", [this] { return runShowOfWords(); });
    addRepository(m_show, "The repository; a single word is the HASH in the current directory");
    m_show->add_option("HASH", m_options.revision, "The commit")->default_str("HEAD")->check(&complaintOfEmptyWord);

    CLI::App* diff =
        addCommand("diff", "Show what differs in a Git working copy", [this] { return runDiff(m_options, m_repository); });
    addRepository(diff, "The working copy; for a REV in the current directory: diff . REV");
    diff->add_option("REV", m_options.revision, "A revision, instead of the index and the last commit")
        ->check(&complaintOfEmptyWord);
}

int HostCommandLine::runShowOfWords()
{
    if (m_show->count("HASH") == 0)
        m_options.revision = m_show->count("REPO") == 0 ? "HEAD" : std::exchange(m_repository, ".");
    return runShow(m_options, m_repository);
}

void HostCommandLine::addBrowser()
{
    CLI::App* branches =
        addCommand("branches", "List the branches of a Git repository", [this] { return runBranches(m_options, m_repository); });
    addRepository(branches);

    CLI::App* log = addCommand("log", "Show the history of a Git repository with its graph",
                               [this] { return runLog(m_options, m_repository, m_log); });
    addRepository(log);
    log->add_option("--max", m_log.rows, "At most so many rows")
        ->type_name("ROWS")
        ->check(&complaintOfNumber)
        ->check(atLeast(1))
        ->default_str("all");
    log->add_option("--restrict", m_log.restriction, "What git log is asked for, instead of all branches")
        ->type_name("ARGS")
        ->check(&complaintOfRestriction);
    CLI::Option* other = nullptr;
    for (const char* order : {"--date-order", "--topo-order"}) {
        CLI::Option* added = log->add_flag_callback(
            order, [this, order] { m_log.order = order; }, std::string("Sorted as by git log ") + order);
        if (other)
            added->excludes(other);
        other = added;
    }
    log->add_option("--filter", m_log.filter, "Only commits with this in author, subject or hash")->type_name("TEXT");
}

void HostCommandLine::addFullScreen()
{
    CLI::App* browse = addCommand("browse", "Browse the history of a Git repository on the full screen of a terminal",
                                  [this] { return runBrowse(m_options, m_repository, m_browse); });
    addRepository(browse);
    CLI::Option* dump = browse->add_option("--dump", m_browse.dump, "Print one screen of this size instead, without a terminal")
                            ->type_name("WIDTHxHEIGHT");
    browse->add_option("--keys", m_browse.keys, "Keys that are pressed before, such as /parser<Enter>")
        ->type_name("KEYS")
        ->needs(dump);
}

void HostCommandLine::addFileCommands()
{
    CLI::App* reload = addCommand("reload", "Show when files changed", [this] { return runReload(m_options, m_words); });
    reload->add_option("FILE", m_words, "Files")->required();
    reload->add_option("--budget", m_options.budgetMs, "Milliseconds that it may take; half of it makes a file slow")
        ->type_name("MS")
        ->check(&complaintOfNumber)
        ->check(atLeast(0, 3600000))
        ->capture_default_str();

    CLI::App* liveDiff = addCommand("livediff", "Fetch the committed revision of a file",
                                    [this] { return runLiveDiff(m_options, m_name, m_command, m_background); });
    liveDiff->add_option("FILE", m_name, "The file")->required();
    liveDiff->add_option("--command", m_command, "A program and its arguments that write it; only |, &, < and > are for a shell")
        ->default_str("the file's tool");
    liveDiff->add_option("--cache", m_options.cache, "Where the editor keeps it")->type_name("DIR")->default_str("your cache");
    liveDiff->add_flag("--background", m_background, "On the module's thread");

    CLI::App* recent = addCommand("recent", "Put files on the system's list of recent documents",
                                  [this] { return runRecent(m_options, m_words); });
    recent->add_option("FILE", m_words, "Files")->required();
}

void HostCommandLine::addModuleCommands()
{
    addCommand("functions", "List the functions that the module registers", [this] { return runFunctions(m_options); });

    CLI::App* call = addCommand("call", "Call one function; variables by reference are JSON",
                                [this] { return runCall(m_options, m_name, m_words); });
    call->add_option("NAME", m_name, "Its name")->required();
    call->add_option("ARG", m_words, "Its arguments");
}
