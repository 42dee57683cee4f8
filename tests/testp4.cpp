// A Perforce client for the tests, with a small depot in the folder beside it, "depot":
//   client  the workspace's name and its root, a line each
//   files   a line each: depot path; path in the workspace; revision here; newest revision; action it is opened for, or -
//   fault   what goes wrong, if anything
// A file that was synced holds "one\n": any other content differs from the depot. The output is in the formats of the command
// reference, https://www.perforce.com/manuals/cmdref/Content/CmdRef/p4_opened.html and its neighbours.

#include "common/cmFile.h"
#include "common/cmSystemPath.h"
#include "tests/HelperSystem.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <thread>

namespace fs = std::filesystem;

namespace {

struct DepotFile {
    std::string depotPath;
    std::string clientPath;
    int have = 0;
    int head = 0;
    std::string action;
};

class Client {
public:
    Client() : m_folder(cmSystemPath(cmProgramPath()).parent_path() / "depot")
    {
        std::ifstream client(m_folder / "client", std::ios::binary);
        std::getline(client, m_name);
        std::getline(client, m_root);
        std::ifstream(m_folder / "fault") >> m_fault;
        std::ifstream files(m_folder / "files", std::ios::binary);
        for (std::string line; std::getline(files, line);) {
            std::istringstream fields(line);
            DepotFile file;
            std::string have;
            std::string head;
            std::getline(fields, file.depotPath, ';');
            std::getline(fields, file.clientPath, ';');
            std::getline(fields, have, ';');
            std::getline(fields, head, ';');
            std::getline(fields, file.action, ';');
            file.have = std::stoi(have);
            file.head = std::stoi(head);
            m_files.push_back(file);
        }
    }

    int run(const std::string& command)
    {
        if (m_fault == "no-server")
            return fail(
                "Perforce client error:\n\tConnect to server failed; check $P4PORT.\n\tTCP connect to perforce:1666 failed.\n");
        if (m_fault == "expired" && command != "client -o ")
            return fail("Your session has expired, please login again.\n");
        if (m_fault == "hang" && command == "sync -n ")
            std::this_thread::sleep_for(std::chrono::hours(1));
        if (m_fault == "flood" && command == "-ztag opened ") {
            for (const std::string line = "... depotFile //depot/" + std::string(4000, 'x') + "\n";;)
                std::cout << line;
        }
        if (command == "client -o ")
            return printForm();
        if (command == "-ztag opened ")
            return printOpened();
        if (command == "diff -sa ")
            return printDifferences();
        return command == "sync -n " ? printSync() : 2;
    }

private:
    static int fail(const char* message)
    {
        std::cerr << message;
        return 1;
    }

    fs::path localPath(const DepotFile& file) const { return cmSystemPath(m_root) / cmSystemPath(file.clientPath); }

    static std::string escaped(const std::string& path)
    {
        std::string text;
        for (const char c : path) {
            char code[4] = {c};
            if (c == '@' || c == '#' || c == '%' || c == '*')
                std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(c));
            text += code;
        }
        return text;
    }

    int printForm() const
    {
        std::cout << "# The form of a workspace.\n#\n#  Client:      The client name.\n#  Root:        The base directory.\n\n"
                  << "Client:\t" << m_name << "\n\nOwner:\tada\n\nDescription:\n\tRoot: of all\n\nRoot:\t" << m_root
                  << "\n\nOptions:\tnoallwrite noclobber\n\nView:\n\t//depot/main/... //" << m_name << "/src/...\n";
        return 0;
    }

    int printOpened() const
    {
        bool any = false;
        for (const DepotFile& file : m_files) {
            if (file.action == "-")
                continue;
            const std::string client = "... clientFile //" + m_name + "/" + escaped(file.clientPath) + "\n";
            // The keys have no order that could be relied on.
            std::cout << (any ? "" : client) << "... depotFile " << escaped(file.depotPath) << "\n... rev " << file.have
                      << "\n... action " << file.action << "\n... change default\n... type text\n... user ada\n"
                      << (any ? client : "") << "\n";
            any = true;
        }
        if (m_fault == "broken")
            std::cout << "... clientFile\n... clientFile //other/x\n... \n...clientFile //" << m_name << "/y\n... clientFile //"
                      << m_name << "/";
        return any ? 0 : fail("File(s) not opened on this client.\n");
    }

    int printDifferences() const
    {
        for (const DepotFile& file : m_files) {
            std::ostringstream content;
            content << std::ifstream(localPath(file), std::ios::binary).rdbuf();
            if (file.action != "-" && content.str() != "one\n")
                std::cout << cmPathText(localPath(file)).c_str() << "\n";
        }
        return 0;
    }

    int printSync() const
    {
        bool any = false;
        for (const DepotFile& file : m_files) {
            if (file.have == file.head)
                continue;
            std::cout << escaped(file.depotPath) << "#" << file.head;
            if (file.action != "-")
                std::cout << " - is opened and not being changed\n";
            else
                std::cout << (file.have == 0 ? " - added as " : " - updating ") << cmPathText(localPath(file)).c_str() << "\n";
            any = true;
        }
        return any ? 0 : fail("File(s) up-to-date.\n");
    }

    fs::path m_folder;
    std::string m_name;
    std::string m_root;
    std::string m_fault;
    std::vector<DepotFile> m_files;
};

}  // namespace

int runHelper(std::vector<std::string> arguments)
{
    std::string command;
    for (const std::string& argument : arguments)
        command += argument + " ";
    return Client().run(command);
}
