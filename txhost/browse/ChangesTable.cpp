#include "txhost/browse/ChangesTable.h"

#include "common/cmDictionary.h"
#include "common/cmPath.h"
#include "txhost/HunkText.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

/// The path below `root`, with slashes.
cmStringT pathBelow(cmROStringT root, cmROStringT path)
{
    cmROStringT relative = path;
    cmRelativePath(path, root, relative);
    cmStringT below(relative);
    std::replace(below.data(), below.data() + below.length(), cmPathSeparator(), '/');
    return below;
}

char kindOf(const Json& entry)
{
    if (entry.at("oldPath") != "")
        return 'R';
    const bool hasOld = entry.at("oldMode") != "";
    const bool hasNew = entry.at("newMode") != "";
    if (hasOld == hasNew)
        return 'M';
    return hasNew ? 'A' : 'D';
}

void addHunk(FileChange& file, const Json& hunk)
{
    file.hunks.push_back({hunkHeader(hunk), textsOf(hunk.at("lines"))});
    const std::size_t parents = parentsOfHunk(hunk);
    for (const cmStringT& line : file.hunks.back().lines) {
        const char kind = kindOfLine(line, parents);
        file.added += kind == '+' ? 1 : 0;
        file.removed += kind == '-' ? 1 : 0;
    }
}

}  // namespace

cmArray<FileChange> changesOf(const Json& table, cmROStringT root)
{
    cmArray<FileChange> files;
    for (const auto& [path, entry] : table.items()) {
        FileChange& file = files.emplace_back();
        file.path = pathBelow(root, path);
        file.kind = kindOf(entry);
        if (file.kind == 'R')
            file.oldPath = pathBelow(root, entry.at("oldPath").get_ref<const std::string&>());
        file.isBinary = entry.at("binary") != 0;
        for (const Json& hunk : entry.at("hunks"))
            addHunk(file, hunk);
    }
    return files;
}

cmArray<FileChange> workingCopyChangesOf(const Json& table)
{
    cmSortedDictionary<cmStringT, FileChange> files;
    const auto mark = [&files](const Json& lists, const char* list, bool FileChange::*flag) {
        for (const cmStringT& path : lists.contains(list) ? textsOf(lists.at(list)) : cmArray<cmStringT>()) {
            files[path].path = path;
            files[path].*flag = true;
        }
    };
    for (const Json& lists : table) {
        mark(lists, "local", &FileChange::isUnstaged);
        mark(lists, "staged", &FileChange::isStaged);
    }
    cmArray<FileChange> list;
    for (auto& [path, file] : files)
        list.push_back(std::move(file));
    return list;
}
