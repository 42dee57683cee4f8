#include "txhost/CommandParser.h"

#include "common/cmString.h"
#include "txhost/Console.h"
#include "txhost/NearestWord.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace {

constexpr int exitUsage = 2;

/// CLI11 splits a word in square brackets into a list. It leaves a word alone that begins with this character.
constexpr char bracketGuard = '\x1F';

std::string withoutGuard(std::string word)
{
    if (word.starts_with(bracketGuard))
        word.erase(0, 1);
    return word;
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

}  // namespace

CommandParser::CommandParser(const std::string& description) : m_app(description, "txhost")
{
    m_app.allow_windows_style_options(false);  // a word such as /x is an argument on every system
    m_app.require_subcommand(1);
    m_app.set_version_flag("--version", "txhost " FILEWATCHER_VERSION, "Print the version");
    m_app.footer(
        "txhost help COMMAND: its arguments and options. Exit codes: 0 done, 1 something was not answered, 2 wrong usage.");
    addCommonOptions(m_app);
    CLI::App* help = addCommand("help", "Explain the commands, or one of them", [this] { return printHelp(); });
    help->add_option("COMMAND", m_topic, "The command");
}

std::optional<int> CommandParser::parse(const std::vector<std::string>& words)
{
    removeGuards(m_app);
    for (CLI::App* command : m_app.get_subcommands(nullptr))
        removeGuards(*command);
    try {
        m_app.parse(guardedWords(words));
        return std::nullopt;
    } catch (const CLI::Success& success) {
        std::ostringstream text;
        m_app.exit(success, text);
        console::printLine(cmWithoutLineEnd(text.str()));
        return 0;
    } catch (const CLI::ParseError& error) {
        console::printErrorLines("txhost: " + complaintAbout(error));
        return exitUsage;
    }
}

void CommandParser::removeGuards(CLI::App& app)
{
    for (CLI::Option* option : app.get_options(nullptr))
        option->transform(&withoutGuard);
}

std::string CommandParser::complaintAbout(const CLI::ParseError& error)
{
    const std::vector<std::string> unexpected = m_app.remaining();
    if (!unexpected.empty() && !unexpected.front().starts_with('-'))
        return unknownCommand(withoutGuard(unexpected.front()));
    const std::vector<CLI::App*> parsed = m_app.get_subcommands();
    if (parsed.empty() && unexpected.empty() && dynamic_cast<const CLI::RequiredError*>(&error))
        return "there is no command; txhost help lists them";
    std::string complaint = error.what();
    if (dynamic_cast<const CLI::ExtrasError*>(&error)) {
        complaint = "not expected:";
        for (const std::string& word : m_app.remaining(true))
            complaint += word == "--" ? "" : " " + withoutGuard(word);
    }
    return complaint + "\nSee txhost help" + (parsed.empty() ? "" : " " + parsed.front()->get_name());
}

std::string CommandParser::unknownCommand(const std::string& word)
{
    std::vector<std::string> names;
    for (const CLI::App* command : m_app.get_subcommands(nullptr))
        names.push_back(command->get_name());
    const std::string nearest = nearestWord(word, names);
    return "there is no command " + word + (nearest.empty() ? "; txhost help lists them" : "; the nearest one is " + nearest);
}

int CommandParser::printHelp()
{
    const auto found = m_app.get_subcommands([this](const CLI::App* command) { return command->get_name() == m_topic; });
    if (found.empty() && !m_topic.empty())
        throw UsageError(unknownCommand(m_topic));
    m_app.clear();  // else it would describe the command that was parsed
    console::printLine(cmWithoutLineEnd(found.empty() ? m_app.help() : found.front()->help("txhost")));
    return 0;
}

CLI::App* CommandParser::addCommand(const std::string& name, const std::string& description, std::function<int()> run)
{
    CLI::App* added = m_app.add_subcommand(name, description);
    added->callback([this, run = std::move(run)] { m_run = run; });
    addCommonOptions(*added);
    return added;
}

/// The program and each of its commands have them, so that they may stand anywhere and every help shows them.
void CommandParser::addCommonOptions(CLI::App& app)
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
}
