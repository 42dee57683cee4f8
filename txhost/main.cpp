#include "txhost/Console.h"
#include "txhost/HostCommandLine.h"
#include "txhost/JsonText.h"

#include <exception>
#include <optional>

namespace {

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;

/// Runs the command and prints why it could not answer. Returns the exit code.
int runCommand(HostCommandLine& commandLine)
{
    Failure failure;
    try {
        const int exitCode = commandLine.run();
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
    printFailure(failure, commandLine.options().json);
    return exitFailure;
}

}  // namespace

int main(int argc, char** argv)
{
    HostCommandLine commandLine;
    const std::optional<int> parsed = commandLine.parse(console::start(argc, argv));
    const int exitCode = parsed ? *parsed : runCommand(commandLine);
    if (console::isReaderGone())  // such as "head": it has what it asked for
        return 0;
    return console::isOutputComplete() ? exitCode : exitFailure;
}
