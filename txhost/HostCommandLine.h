#pragma once

#include "txhost/CommandParser.h"
#include "txhost/Commands.h"

#include <string>
#include <vector>

/// The command line of txhost: its commands, their arguments and options. For the main thread.
class HostCommandLine : public CommandParser {
public:
    HostCommandLine();

private:
    void addStatusAndWatch();
    void addGitQueries();
    void addBrowser();
    void addFullScreen();
    void addFileCommands();
    void addModuleCommands();
    void addWorkingCopies(CLI::App* command, const std::string& description);
    void addRepository(CLI::App* command, const std::string& description = "The repository");
    int runShowOfWords();

    CLI::App* m_show = nullptr;
    std::string m_name;
    std::string m_repository = ".";
    std::vector<std::string> m_words;
    LogOptions m_log;
    BrowseOptions m_browse;
    StatusOptions m_status;
    std::string m_command;
    bool m_background = false;
};
