#include "common/ChildProcess.h"

#include "common/ChildStarter.h"
#include "common/CommandLine.h"
#include "common/ProgramSearch.h"
#include "common/cmFile.h"
#include "common/cmStatusException.h"
#include "common/cmStringCatHelper.h"

#include <utility>

namespace {

void createPipes(const SpawnStreams& streams)
{
    if (streams.input)
        streams.input->create(true, streams.inputSize);
    if (streams.output)
        streams.output->create(false, streams.outputSize);
    if (streams.error)
        streams.error->create(false, streams.errorSize);
}

template <class Operation>
void forEachPipe(const SpawnStreams& streams, Operation operation)
{
    for (ChildPipe* pipe : {streams.input, streams.output, streams.error}) {
        if (pipe)
            operation(*pipe);
    }
}

cmStringT searchProgram(cmROStringT program, const Environment& host)
{
    return findProgram(program, environmentValue(host, "PATH"), cmNativePathStyle, &ChildStarter::isProgram);
}

Environment childEnvironment(const Environment& host, bool quiet, const Environment& variables, cmROStringT workingDirectory)
{
    // Some tools trust PWD more than the system. So it must name the child's directory.
    Environment settings = variables;
    const bool hasPWD = !environmentValue(variables, "PWD").isNull() || !environmentValue(host, "PWD").isNull();
    if (hasPWD && cmIsAbsolutePath(workingDirectory))
        settings.push_back(cmCat("PWD=") + workingDirectory);
    Environment environment = quiet ? quietEnvironment(host, settings) : withVariables(host, settings);
    const bool mayLie = !workingDirectory.empty() && !cmIsAbsolutePath(workingDirectory);
    return mayLie ? withoutVariable(std::move(environment), "PWD") : environment;
}

/// Creates the pipes and starts the child. Returns 0 or the status to throw, with the reason in `detail`.
std::int32_t startChild(ChildProcess& process, const ChildStarter& starter, cmStringT& detail)
{
    try {
        createPipes(starter.streams);
    } catch (const cmStatusException& failure) {
        detail = "no pipe could be made";
        return failure.status();
    }
    if (starter.start(process, detail))
        return 0;
    if (!starter.workingDirectory.isEmpty() && !cmIsDirectory(starter.workingDirectory))
        detail = cmCat(starter.workingDirectory) + ": no such directory";
    return cmStatusProcessFailed;
}

}  // namespace

void spawnProcess(ChildProcess& process, cmROStringT commandLine, SpawnOptions options, const Environment& variables,
                  cmROStringT workingDirectory, const SpawnStreams& streams, cmStringT* errorDetail, bool quiet)
{
    process.close();
    const Environment host = hostEnvironment();
    const CommandLine command = splitCommandLine(commandLine);
    ChildStarter starter;
    starter.program = searchProgram(command.program, host);
    starter.arguments = command.arguments;
    starter.interpreter = (options & spawnScanOperators) != 0 && hasShellOperator(commandLine);
    starter.options = starter.interpreter ? options | spawnHiddenWindow : options;
    starter.environment = childEnvironment(host, quiet, variables, workingDirectory);
    starter.workingDirectory = workingDirectory;
    starter.streams = streams;

    cmStringT detail;
    std::int32_t status = cmStatusProcessFailed;
    if (commandLine.find('\0') != cmROStringT::npos || workingDirectory.find('\0') != cmROStringT::npos)
        detail = "a command cannot hold a NUL";  // the system would take it for the end of the text
    else if (starter.program.isNull())
        detail = cmCat("no program that can be started: ") + command.program;
    else
        status = startChild(process, starter, detail);

    if (status != 0) {
        forEachPipe(streams, [](ChildPipe& pipe) { pipe.close(); });
        if (errorDetail)
            *errorDetail = detail;
        throw cmStatusException(status);
    }
    forEachPipe(streams, [](ChildPipe& pipe) { pipe.closeChildEnd(); });
    if (options & spawnForget)
        process.close();
}

cmStringT findHostProgram(cmROStringT program)
{
    return searchProgram(program, hostEnvironment());
}
