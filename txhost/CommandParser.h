#pragma once

#include "txhost/Host.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Parses a command line of commands: has the options of all of them, help and complaints. A derived class adds its commands. For
/// the main thread.
class CommandParser {
public:
    /// Reads the arguments of the program, once. Returns the exit code when that was all: help was asked for and is printed, or
    /// the usage was wrong and is complained about.
    std::optional<int> parse(const std::vector<std::string>& words);
    /// Runs the command that was parsed. Returns its exit code; throws what it throws.
    int run() { return m_run(); }

    const HostOptions& options() const { return m_options; }

protected:
    /// `description` is what the help says of the program.
    explicit CommandParser(const std::string& description);
    ~CommandParser() = default;
    CommandParser(const CommandParser&) = delete;
    CommandParser& operator=(const CommandParser&) = delete;

    /// The command `name` calls `run`. The result lives as long as this object.
    CLI::App* addCommand(const std::string& name, const std::string& description, std::function<int()> run);

    HostOptions m_options;

private:
    void addCommonOptions(CLI::App& app);
    void removeGuards(CLI::App& app);
    int printHelp();
    std::string complaintAbout(const CLI::ParseError& error);
    std::string unknownCommand(const std::string& word);

    CLI::App m_app;
    std::string m_topic;
    std::function<int()> m_run;
};
