#include "common/cmPath.h"
#include "common/cmSystemPath.h"
#include "editor/EditorParts.h"
#include "txapi/txapi.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

// The services for paths and for the editor's folder. They never look at the files themselves.

namespace {

bool isSchemeCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

std::filesystem::path joined(cmROStringT path, cmROStringT directory)
{
    std::filesystem::path base = std::filesystem::current_path();
    if (!directory.empty())
        base /= cmSystemPath(directory);
    return path.empty() ? base : base / cmSystemPath(path);
}

bool isUrl(cmROStringT path)
{
    const std::size_t length = path.find("://");
    // A scheme of one letter would be a drive.
    return length != cmROStringT::npos && length > 1 && std::all_of(path.begin(), path.begin() + length, isSchemeCharacter);
}

/// A remote path is a URL or, on Windows, "\\server\share".
std::int32_t pathKind(cmROStringT path)
{
    if (isUrl(path))
        return txPathRemote;
    if (!cmIsAbsolutePath(path))
        return txPathRelative;
    return cmIsNetworkPath(path) ? txPathRemote : txPathLocal;
}

/// `path` relative to `directory`, and that relative to the current folder, in native separators. A URL, and text that the system
/// cannot take for a path, stay as they are.
cmStringT absolutePath(cmROStringT path, cmROStringT directory, bool normalise)
{
    if (isUrl(path))
        return path;
    try {
        const std::filesystem::path absolute = joined(path, directory);
        if (!normalise)
            return cmPathText(absolute);
        return cmWithoutTrailingSeparator(cmPathText(absolute.lexically_normal()));
    } catch (const std::system_error&) {
        return path;  // the text is no UTF-8, or there is no current folder
    }
}

/// The system's folder for temporary files; empty when there is none.
cmStringT temporaryDirectory()
{
    std::error_code error;
    const std::filesystem::path directory = std::filesystem::temp_directory_path(error);
    return error ? cmStringT("") : cmPathText(directory);
}

}  // namespace

std::int32_t txPathKind(const tamarin::TMString& path)
{
    return pathKind(path.getCMString());
}

void txAbsolute(const tamarin::TMString& path, const tamarin::TMString& directory, std::int32_t normalise,
                tamarin::TMString& absolute)
{
    absolute = absolutePath(path.getCMString(), directory.getCMString(), normalise != 0);
}

std::int32_t txFileSupportsGetFileTime(const tamarin::TMString& path)
{
    return isUrl(path.getCMString()) ? 0 : 1;
}

void txDirectory(std::int32_t which, tamarin::TMString& directory)
{
    directory = onEditorThread(__func__, [&](EditorParts& editor) {
        if (which != txDirectoryPrivate)
            return cmStringT("");
        const cmStringT found = editor.directory.isNull() ? temporaryDirectory() : editor.directory;
        return cmStringT(cmWithoutTrailingSeparator(found));
    });
}
