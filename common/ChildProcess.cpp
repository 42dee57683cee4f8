#include "common/ChildProcess.h"

#include "common/ChildStarter.h"
#include "common/cmFile.h"
#include "common/cmStatusException.h"
#include "common/cmStringCatHelper.h"

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

}  // namespace

void spawnProcess(ChildProcess& process, cmROStringT commandLine, SpawnOptions options, const Environment& variables,
                  cmROStringT workingDirectory, const SpawnStreams& streams, cmStringT* errorDetail, bool quiet)
{
    process.close();
    const Environment host = hostEnvironment();
    const CommandLine command = splitCommandLine(commandLine);
    ChildStarter starter;
    starter.program = findProgram(command.program, environmentValue(host, "PATH"), cmNativePathStyle, &ChildStarter::isProgram);
    starter.arguments = command.arguments;
    starter.interpreter = (options & spawnScanOperators) != 0 && hasShellOperator(commandLine);
    starter.options = starter.interpreter ? options | spawnHiddenWindow : options;
    starter.environment = withVariables(quiet ? quietEnvironment(host) : host, variables);
    if (!workingDirectory.empty() && !environmentValue(starter.environment, "PWD").isNull())  // there are tools that believe it
        starter.environment = withVariables(starter.environment, {cmStringT(cmCat("PWD=") + workingDirectory)});
    starter.workingDirectory = workingDirectory;
    starter.streams = streams;

    cmStringT detail;
    std::int32_t failure = cmStatusProcessFailed;
    if (commandLine.find('\0') != cmROStringT::npos || workingDirectory.find('\0') != cmROStringT::npos) {
        detail = "a command cannot hold a NUL";  // the system would end it there
    } else if (starter.program.isNull()) {
        detail = cmCat("no program that can be started: ") + command.program;
    } else {
        try {
            createPipes(streams);
            if (starter.start(process, detail))
                failure = 0;
            else if (!workingDirectory.empty() && !cmIsDirectory(workingDirectory))
                detail = cmCat(workingDirectory) + ": no such directory";
        } catch (const cmStatusException& pipeFailure) {
            failure = pipeFailure.status();
            detail = "no pipe could be made";
        }
    }
    if (failure != 0) {
        forEachPipe(streams, [](ChildPipe& pipe) { pipe.close(); });
        if (errorDetail)
            *errorDetail = detail;
        throw cmStatusException(failure);
    }
    forEachPipe(streams, [](ChildPipe& pipe) { pipe.closeChildEnd(); });
    if (options & spawnForget)
        process.close();
}

cmStringT findHostProgram(cmROStringT program)
{
    return findProgram(program, environmentValue(hostEnvironment(), "PATH"), cmNativePathStyle, &ChildStarter::isProgram);
}
