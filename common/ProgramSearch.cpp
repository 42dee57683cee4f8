#include "common/ProgramSearch.h"

namespace {

/// Whether Windows starts the file itself. Another program would run everything else, batch files first of all, and read the
/// arguments by its own rules. Windows ignores trailing dots and blanks, so "a.bat. " and "a.bat\\." are batch files too.
bool isWindowsProgram(cmROStringT fileName)
{
    const std::size_t dot = fileName.rfind('.');
    if (dot == cmROStringT::npos || fileName.find(':') != cmROStringT::npos)  // a colon opens another stream of the file
        return false;
    const cmROStringT extension = fileName.substr(dot);
    return cmEqualIgnoringCase(extension, ".exe") || cmEqualIgnoringCase(extension, ".com");
}

cmROStringT withoutEnclosingQuotes(cmROStringT text)
{
    const bool enclosed = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return enclosed ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

cmStringT findProgram(cmROStringT program, cmROStringT pathVariable, cmPathStyle style,
                      const std::function<bool(const cmStringT& path)>& isProgram)
{
    const bool windows = style == cmPathStyle::windows;
    const bool bareName = cmFileNameOf(program, style).size() == program.size();
    cmStringT complete(program);
    if (windows && cmFileNameOf(program, style).find('.') == cmROStringT::npos)
        complete += ".exe";
    if (windows && !isWindowsProgram(cmFileNameOf(complete, style)))
        return {};
    if (cmIsAbsolutePath(program, style))
        return isProgram(complete) ? complete : cmStringT();
    if (program.empty() || !bareName)
        return {};
    while (!pathVariable.empty()) {
        cmROStringT directory = cmTakeUntil(pathVariable, windows ? ';' : ':');
        if (windows)
            directory = withoutEnclosingQuotes(directory);
        if (!cmIsAbsolutePath(directory, style))
            continue;
        cmStringT candidate = cmJoinPath(directory, complete, style);
        if (isProgram(candidate))
            return candidate;
    }
    return {};
}
