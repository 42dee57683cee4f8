#include "txhost/HostCommandLine.h"

#include "common/cmString.h"
#include "txhost/Console.h"
#include "txhost/NearestWord.h"

#include <algorithm>
#include <limits>
#include <sstream>
#include <utility>

namespace {

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

void chooseColours(const std::string& when)
{
    using enum console::ColourChoice;
    console::chooseColours(when == "always" ? always : when == "never" ? never : automatic);
}

CLI::Range atLeast(int least, int most = std::numeric_limits<int>::max())
{
    return {least, most};
}

}  // namespace

HostCommandLine::HostCommandLine()
{
    m_app.allow_windows_style_options(false);  // a word such as /x is an argument on every system
    m_app.require_subcommand(1);
    m_app.set_version_flag("--version", "txhost " FILEWATCHER_VERSION, "Print the version");
    m_app.footer(
        "txhost help COMMAND: its arguments and options. Exit codes: 0 done, 1 something was not answered, 2 wrong usage.");
    addCommonOptions(m_app);
    addCommands();
}

std::optional<int> HostCommandLine::parse(const std::vector<std::string>& words)
{
    try {
        m_app.parse(guardedWords(words));
        removeGuards();
        return std::nullopt;
    } catch (const CLI::Success& success) {
        std::ostringstream text;
        m_app.exit(success, text);
        console::printLine(cmWithoutLineEnd(text.str()));
        return 0;
    } catch (const CLI::ParseError& error) {
        console::printErrorLines(complaintAbout(error));
        return exitUsage;
    }
}

void HostCommandLine::removeGuards()
{
    for (std::string& word : m_words)
        removeGuard(word);
    for (std::string* word :
         {&m_name, &m_repository, &m_command, &m_log.restriction, &m_log.filter, &m_options.revision, &m_options.cache})
        removeGuard(*word);
    for (auto& [tool, program] : m_options.programs)
        removeGuard(program);
}

std::string HostCommandLine::complaintAbout(const CLI::ParseError& error)
{
    std::vector<std::string> unexpected = m_app.remaining();
    if (!unexpected.empty() && !unexpected.front().starts_with('-')) {
        removeGuard(unexpected.front());
        return "txhost: " + unknownCommand(unexpected.front());
    }
    std::ostringstream ignored;
    std::ostringstream complaint;
    m_app.exit(error, ignored, complaint);
    return complaint.str();
}

std::string HostCommandLine::unknownCommand(const std::string& word)
{
    std::vector<std::string> names;
    for (const CLI::App* command : m_app.get_subcommands(nullptr))
        names.push_back(command->get_name());
    const std::string nearest = nearestWord(word, names);
    return "there is no command " + word + (nearest.empty() ? "; txhost help lists them" : "; the nearest one is " + nearest);
}

int HostCommandLine::printHelp()
{
    const auto found = m_app.get_subcommands([this](const CLI::App* command) { return command->get_name() == m_name; });
    if (found.empty() && !m_name.empty())
        throw UsageError(unknownCommand(m_name));
    m_app.clear();  // else it would describe the command that was parsed
    console::printLine(cmWithoutLineEnd(found.empty() ? m_app.help() : found.front()->help("txhost")));
    return 0;
}

int HostCommandLine::runShowOf(const CLI::Option* repository, const CLI::Option* hash)
{
    if (hash->count() == 0)
        m_options.revision = repository->count() == 0 ? "HEAD" : std::exchange(m_repository, ".");
    return runShow(m_options, m_repository);
}

CLI::App* HostCommandLine::addCommand(const std::string& name, const std::string& description, std::function<int()> run)
{
    CLI::App* added = m_app.add_subcommand(name, description);
    added->callback([this, run = std::move(run)] { m_run = run; });
    addCommonOptions(*added);
    return added;
}

/// The program and each of its commands have them, so that they may stand anywhere and every help shows them.
void HostCommandLine::addCommonOptions(CLI::App& app)
{
    constexpr const char* group = "Common options";
    app.get_help_ptr()->description("Print this help");
    app.add_flag("--json", m_options.json, "One JSON object a line")->group(group);
    app.add_flag("--debug", m_options.debug, "Write the editor's debug log to standard error")->group(group);
    app.add_option_function<std::string>("--color", &chooseColours, "Whether text is coloured; with always as for a pager")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->default_str("auto")
        ->group(group);
    for (const Tool* tool : allTools) {
        const std::string name = tool->name;
        app.add_option("--" + name, m_options.programs[tool->number], "The " + name + " program; looked for in PATH")
            ->type_name("PATH")
            ->default_str(name)
            ->group(group);
    }
    app.add_option("--max-output", m_options.maxStatusOutput, "Bytes that one run of a tool may write")
        ->type_name("BYTES")
        ->check(atLeast(1))
        ->capture_default_str()
        ->group(group);
}

void HostCommandLine::addCommands()
{
    CLI::App* help = addCommand("help", "Explain the commands, or one of them", [this] { return printHelp(); });
    help->add_option("COMMAND", m_name, "The command");
    addCommand("tour", "Use every feature on a scratch repository", [this] { return runTour(m_options); });
    addStatusAndWatch();
    addBrowser();
    addGitQueries();
    addFileCommands();
    addCommand("functions", "List the functions that the module registers", [this] { return runFunctions(m_options); });

    CLI::App* call = addCommand("call", "Call one function; variables by reference are JSON",
                                [this] { return runCall(m_options, m_name, m_words); });
    call->add_option("NAME", m_name, "Its name")->required();
    call->add_option("ARG", m_words, "Its arguments");
}

void HostCommandLine::addStatusAndWatch()
{
    const auto named = [this] { return m_words.empty() ? std::vector<std::string>{"."} : m_words; };
    CLI::App* status =
        addCommand("status", "Show which files are modified", [this, named] { return runStatus(m_options, named(), m_status); });
    addWorkingCopies(status);
    status->add_flag("--exit-code", m_status.exitCode, "End with 3 when something is modified, unless a failure ends it with 1");

    status->add_flag("--recurse", m_status.recurse, "Show all repositories below DIR, also those with nothing modified");

    CLI::App* watch = addCommand("watch", "Show status changes and changed files until Ctrl-C",
                                 [this, named] { return runWatch(m_options, named(), m_command); });
    addWorkingCopies(watch);
    watch
        ->add_option("--exec", m_command,
                     "What the shell runs on a change, with the changed paths in its input, each ended by NUL")
        ->type_name("COMMAND");
    watch->add_option("--interval", m_options.intervalSeconds, "Seconds between two looks")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.2, 86400.0))
        ->capture_default_str();
}

void HostCommandLine::addWorkingCopies(CLI::App* command)
{
    command->add_option("DIR", m_words, "Directories in working copies, of watch also files")
        ->type_name("TEXT")
        ->default_str(".");
    command->add_option("--tool", m_options.tool, "Whose they are, instead of finding out")
        ->check(CLI::IsMember(toolNames()))
        ->default_str("the tool whose mark is found");
    command->add_option("--patience", m_options.patienceMs, "Milliseconds until a tool that does not answer is named")
        ->type_name("MS")
        ->check(atLeast(0, 3600000))
        ->capture_default_str();
    command->add_flag("--updates", m_options.updates, "Show what is newer in the repository, too");
}

CLI::Option* HostCommandLine::addRepository(CLI::App* command, const std::string& description)
{
    return command->add_option("REPO", m_repository, description)->capture_default_str();
}

void HostCommandLine::addGitQueries()
{
    CLI::App* history =
        addCommand("history", "Show the revisions of a file in Git", [this] { return runHistory(m_options, m_name); });
    history->add_option("FILE", m_name, "The file")->required();
    history->add_option("--rev", m_options.revision, "Where it begins")->type_name("REV")->default_str("HEAD");
    history->add_flag("--newest", m_options.newest, "The newest revision alone");
    history->add_flag("--follow", m_options.follow, "Go on beyond renames");
    history->add_flag("--working", m_options.working, "Begin with the working file");

    CLI::App* show = addCommand("show", "Show a commit of a Git repository", {});
    const CLI::Option* repository = addRepository(show, "The repository; a single word is the HASH in the current directory");
    const CLI::Option* hash = show->add_option("HASH", m_options.revision, "The commit")->default_str("HEAD");
    show->callback([this, repository, hash] { m_run = [this, repository, hash] { return runShowOf(repository, hash); }; });

    CLI::App* diff =
        addCommand("diff", "Show what differs in a Git working copy", [this] { return runDiff(m_options, m_repository); });
    addRepository(diff, "The working copy; for a REV in the current directory: diff . REV");
    diff->add_option("REV", m_options.revision, "A revision, instead of the index and the last commit");
}

void HostCommandLine::addBrowser()
{
    CLI::App* branches =
        addCommand("branches", "List the branches of a Git repository", [this] { return runBranches(m_options, m_repository); });
    addRepository(branches);

    CLI::App* log = addCommand("log", "Show the history of a Git repository with its graph",
                               [this] { return runLog(m_options, m_repository, m_log); });
    addRepository(log);
    log->add_option("--max", m_log.rows, "At most so many rows")->type_name("ROWS")->check(atLeast(1))->default_str("all");
    log->add_option("--restrict", m_log.restriction, "What git log is asked for, instead of all branches")->type_name("ARGS");
    for (const char* order : {"--date-order", "--topo-order"})
        log->add_flag_callback(
            order, [this, order] { m_log.order = order; }, std::string("Sorted as by git log ") + order);
    log->add_option("--filter", m_log.filter, "Only commits with this in author, subject or hash")->type_name("TEXT");
}

void HostCommandLine::addFileCommands()
{
    CLI::App* reload = addCommand("reload", "Show when files changed", [this] { return runReload(m_options, m_words); });
    reload->add_option("FILE", m_words, "Files")->required();
    reload->add_option("--budget", m_options.budgetMs, "Milliseconds that it may take; half of it makes a file slow")
        ->type_name("MS")
        ->check(atLeast(0, 3600000))
        ->capture_default_str();

    CLI::App* liveDiff = addCommand("livediff", "Fetch the committed revision of a file",
                                    [this] { return runLiveDiff(m_options, m_name, m_command, m_background); });
    liveDiff->add_option("FILE", m_name, "The file")->required();
    liveDiff->add_option("--command", m_command, "What writes it to its output")->default_str("the file's tool");
    liveDiff->add_option("--cache", m_options.cache, "Where the editor keeps it")->type_name("DIR")->default_str("your cache");
    liveDiff->add_flag("--background", m_background, "On the module's thread");

    CLI::App* recent = addCommand("recent", "Put files on the system's list of recent documents",
                                  [this] { return runRecent(m_options, m_words); });
    recent->add_option("FILE", m_words, "Files")->required();
}
