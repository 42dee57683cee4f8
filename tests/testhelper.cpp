// The child program of the tests, with named behaviours. The first argument selects one; otherwise the name of the program
// does, so that a copy of it can stand in for a tool.

#include "common/Environment.h"
#include "common/cmFile.h"
#include "common/cmSystemPath.h"
#include "tests/HelperSystem.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

[[noreturn]] void hang()
{
    for (;;)
        std::this_thread::sleep_for(std::chrono::seconds(1));
}

void writeTo(std::FILE* stream, const std::string& bytes)
{
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

/// The behaviour of a program that must never be started: it leaves a file beside itself.
void leaveTrace(const Arguments&)
{
    std::ofstream(cmSystemPath(cmProgramPath()).replace_filename("trace")) << "was here";
}

/// A Subversion client that logs its arguments and answers with the content of the file beside it. When it asks the server, that
/// is silent as long as there is a file named after the directory, and what it complains about is in a file of its own. A file
/// "DIRECTORY.slow" makes it slow.
void replaySvn(const Arguments& arguments)
{
    const std::filesystem::path folder = cmSystemPath(cmProgramPath()).parent_path();
    const bool asksServer = std::find(arguments.begin(), arguments.end(), "--show-updates") != arguments.end();
    std::ofstream log(folder / "svn.log", std::ios::app | std::ios::binary);
    for (const std::string& argument : arguments)
        log << argument << ' ';
    log << std::endl;
    while (asksServer && std::filesystem::exists(cmSystemPath(arguments.back() + ".silent"))) {
        if (std::filesystem::exists(folder / "lively"))
            std::cout << ' ' << std::flush;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (std::filesystem::exists(cmSystemPath(arguments.back() + ".slow")))
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    std::cout << std::ifstream(folder / "svn.xml", std::ios::binary).rdbuf();
    std::cerr << std::ifstream(folder / (asksServer ? "server.err" : "svn.err"), std::ios::binary).rdbuf();
}

/// A Perforce client that answers each command with what the files beside it hold, such as "diff-sa.out" and "diff-sa.err".
void replayPerforce(const Arguments& arguments)
{
    std::string command;
    for (const std::string& argument : arguments)
        command += argument;
    const std::filesystem::path folder = cmSystemPath(cmProgramPath()).parent_path();
    std::cout << std::ifstream(folder / (command + ".out"), std::ios::binary).rdbuf();
    std::cerr << std::ifstream(folder / (command + ".err"), std::ios::binary).rdbuf();
}

/// A git whose log writes the content of the file beside it and then nothing more.
void pauseInLog(const Arguments& arguments)
{
    if (std::find(arguments.begin(), arguments.end(), "--date=iso") == arguments.end())
        return;
    std::cout << std::ifstream(cmSystemPath(cmProgramPath()).replace_filename("log"), std::ios::binary).rdbuf() << std::flush;
    hang();
}

void floodBoth(std::size_t count)
{
    const std::string block = pattern(count);
    std::thread other([&block] { writeTo(stderr, block); });
    writeTo(stdout, block);
    other.join();
}

const std::map<std::string, std::function<void(const Arguments&)>> behaviours{
    {"args",
     [](const Arguments& a) {
         for (const std::string& text : a)
             std::cout << text.size() << ':' << text << '\n';
     }},
    {"bytes", [](const Arguments& a) { writeTo(stdout, pattern(std::stoul(a.at(0)))); }},
    {"both", [](const Arguments& a) { floodBoth(std::stoul(a.at(0))); }},
    {"hang", [](const Arguments&) { hang(); }},
    {"bytes-then-hang",
     [](const Arguments& a) {
         writeTo(stdout, pattern(std::stoul(a.at(0))));
         hang();
     }},
    {"say",
     [](const Arguments& a) {
         writeTo(stdout, a.at(0));
         writeTo(stderr, a.at(1));
     }},
    {"leave-child",
     [](const Arguments&) {
         writeTo(stdout, "parent");
         startBeside("hang");
     }},
    {"directory", [](const Arguments&) { std::cout << cmPathText(std::filesystem::current_path()).c_str(); }},
    {"environment",
     [](const Arguments&) {
         for (const cmStringT& variable : hostEnvironment())
             std::cout << variable.c_str() << '\n';
     }},
    {"count-handles", [](const Arguments&) { std::cout << openDescriptors(); }},
    {"echo-input",
     [](const Arguments&) {
         std::cout << std::string(std::istreambuf_iterator<char>(std::cin), {});
         std::cerr << "problem\n";
     }},
    {"show", [](const Arguments& a) { std::cout << std::ifstream(cmSystemPath(a.at(0))).rdbuf(); }},
    {"mark", [](const Arguments& a) { std::ofstream(cmSystemPath(a.at(0))) << "was here"; }},
    // Stand-ins for a tool, by the name of the copy.
    {"tool-hangs-with-child",
     [](const Arguments&) {
         startBeside("hang");
         hang();
     }},
    {"tool-floods",
     [](const Arguments&) {
         for (const std::string block = pattern(65536);;)
             writeTo(stdout, block);
     }},
    {"tool-git-pauses", &pauseInLog},
    {"tool-svn", &replaySvn},
    {"tool-p4", &replayPerforce},
    {"monitor", &leaveTrace},
    {"git", &leaveTrace},
    {"sh", &leaveTrace},
    {"tool-fails", [](const Arguments&) { writeTo(stderr, "fatal: this tool always fails\n"); }},
};

}  // namespace

int runHelper(std::vector<std::string> arguments)
{
    std::string name = cmSystemPath(cmProgramPath()).stem().string();
    if (!arguments.empty() && behaviours.contains(arguments.front())) {
        name = arguments.front();
        arguments.erase(arguments.begin());
    }
    const auto behaviour = behaviours.find(name);
    if (behaviour == behaviours.end())
        return 2;
    behaviour->second(arguments);
    return 0;
}
