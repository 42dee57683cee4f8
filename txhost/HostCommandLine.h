#pragma once

#include "txhost/Commands.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The command line: its commands, their arguments and options. For the main thread.
class HostCommandLine {
public:
    HostCommandLine();

    /// Reads the arguments of the program, once. Returns the exit code when that was all: help was asked for and is printed, or
    /// the usage was wrong and is complained about.
    std::optional<int> parse(const std::vector<std::string>& words);
    /// Runs the command that was parsed. Returns its exit code; throws what it throws.
    int run() { return m_run(); }

    const HostOptions& options() const { return m_options; }

private:
    void addCommands();
    void addStatusAndWatch();
    void addGitQueries();
    void addBrowser();
    void addFileCommands();
    CLI::App* addCommand(const std::string& name, const std::string& description, std::function<int()> run);
    void addCommonOptions(CLI::App& app);
    void addWorkingCopies(CLI::App* command);
    CLI::Option* addRepository(CLI::App* command, const std::string& description = "The repository");

    void removeGuards();
    int printHelp();
    int runShowOf(const CLI::Option* repository, const CLI::Option* hash);
    std::string complaintAbout(const CLI::ParseError& error);
    std::string unknownCommand(const std::string& word);

    CLI::App m_app{"txhost: a headless Tamarin that loads the filewatcher module and uses it", "txhost"};
    HostOptions m_options;
    std::string m_name;
    std::string m_repository = ".";
    std::vector<std::string> m_words;
    LogOptions m_log;
    StatusOptions m_status;
    std::string m_command;
    bool m_background = false;
    std::function<int()> m_run;
};
