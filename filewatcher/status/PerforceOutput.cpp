#include "filewatcher/status/PerforceOutput.h"

#include "common/cmDictionary.h"
#include "common/cmHexDigits.h"
#include "common/cmStringCatHelper.h"

#include <algorithm>
#include <array>
#include <string>

namespace {

constexpr cmROStringT blanks = " \t";
constexpr cmROStringT nullRoot = "null";

/// Removes the first line from `text` and returns it without its line end.
cmROStringT takeLine(cmROStringT& text)
{
    cmROStringT line = cmTakeUntil(text, '\n');
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

cmROStringT trimmed(cmROStringT text)
{
    const std::size_t start = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

/// A value of a form, without the quotes that it may have.
cmROStringT fieldValue(cmROStringT text)
{
    const cmROStringT value = trimmed(text);
    return value.size() >= 2 && value.front() == '"' && value.back() == '"' ? value.substr(1, value.size() - 2) : value;
}

/// Decodes a path: the client writes the characters @ # * %, which have a meaning in its syntax, as % and two hex digits.
cmStringT decoded(cmROStringT text)
{
    cmStringT plain("");
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape =
            text[i] == '%' && i + 2 < text.size() && cmHexDigitValue(text[i + 1]) >= 0 && cmHexDigitValue(text[i + 2]) >= 0;
        plain += escape ? static_cast<char>(cmHexDigitValue(text[i + 1]) * 16 + cmHexDigitValue(text[i + 2])) : text[i];
        i += escape ? 2 : 0;
    }
    return plain;
}

}  // namespace

PerforceClient parsePerforceClient(cmROStringT form, const WatchedSpelling& watched, cmPathStyle style)
{
    PerforceClient client;
    cmArray<cmStringT> roots;
    cmROStringT field;
    while (!form.empty()) {
        cmROStringT line = takeLine(form);
        if (!line.empty() && blanks.find(line.front()) == cmROStringT::npos) {  // otherwise one more value of the same field
            field = line.substr(0, line.find(':'));
            line.remove_prefix(std::min(field.size() + 1, line.size()));
        }
        const cmROStringT value = fieldValue(line);
        if (value.empty())
            continue;
        if (field == "Client")
            client.name = value;
        else if (field == "Root" || field == "AltRoots")  // the form has them in this order
            roots.push_back(cmStringT(cmWithoutTrailingSeparator(cmNativeSeparators(value, style), style)));
    }
    const auto counts = [&](const cmStringT& root) { return root == nullRoot || watched.isBelow(root); };
    const auto chosen = std::find_if(roots.begin(), roots.end(), counts);
    client.root = chosen != roots.end() ? *chosen : roots.empty() ? cmStringT() : roots.front();
    if (client.root == nullRoot)
        client.root.clear();
    return client;
}

cmArray<PerforceOpenedFile> parsePerforceOpened(cmROStringT output, const PerforceClient& client, cmPathStyle style)
{
    constexpr cmROStringT depotField = "... depotFile ";
    constexpr cmROStringT clientField = "... clientFile ";
    const cmStringT prefix = cmCat("//") + client.name + "/";
    cmArray<PerforceOpenedFile> files;
    PerforceOpenedFile file;
    const auto endRecord = [&] {
        if (!file.path.isEmpty())
            files.push_back(file);
        file = {};
    };
    while (!output.empty()) {
        const cmROStringT line = takeLine(output);
        if (line.empty()) {
            endRecord();
        } else if (line.starts_with(depotField)) {
            file.depotPath = line.substr(depotField.size());
        } else if (line.starts_with(clientField) && line.substr(clientField.size()).starts_with(prefix)) {
            const cmStringT path = cmNativeSeparators(decoded(line.substr(clientField.size() + prefix.length())), style);
            file.path = client.root.isEmpty() || path.isEmpty() ? path : cmJoinPath(client.root, path, style);
        }
    }
    endRecord();
    return files;
}

cmArray<cmStringT> parsePerforceDiff(cmROStringT output, cmPathStyle style)
{
    cmArray<cmStringT> files;
    while (!output.empty()) {
        const cmROStringT line = takeLine(output);
        if (cmIsAbsolutePath(line, style))
            files.push_back(cmNativeSeparators(line, style));
    }
    return files;
}

cmArray<cmStringT> parsePerforceSync(cmROStringT output, const cmArray<PerforceOpenedFile>& opened, cmPathStyle style)
{
    cmDictionary<std::string, cmStringT> openedPaths;
    for (const PerforceOpenedFile& file : opened)
        openedPaths.emplace(file.depotPath.view(), file.path);
    cmArray<cmStringT> files;
    while (!output.empty()) {
        const cmROStringT line = takeLine(output);
        // The first "#" ends the depot path, in which any other is escaped.
        const std::size_t end = line.find('#');
        const std::size_t action = line.find(" - ", std::min(end, line.size()));
        if (action == cmROStringT::npos || !line.starts_with("//"))
            continue;
        const cmROStringT words = line.substr(action);
        const auto known = openedPaths.find(std::string(line.substr(0, end)));
        if (known != openedPaths.end() && words.starts_with(" - is opened and not being changed"))
            files.push_back(known->second);
        for (const cmROStringT wanted : {cmROStringT(" - updating "), cmROStringT(" - deleted as ")}) {
            if (words.starts_with(wanted) && cmIsAbsolutePath(words.substr(wanted.size()), style))
                files.push_back(cmNativeSeparators(words.substr(wanted.size()), style));
        }
    }
    return files;
}

bool isPerforceNothingToList(cmROStringT errorOutput)
{
    constexpr std::array<cmROStringT, 4> quiet{"not opened", "up-to-date", "No such file", "no such file"};
    while (!errorOutput.empty()) {
        const cmROStringT line = takeLine(errorOutput);
        const bool harmless = trimmed(line).empty() || std::any_of(quiet.begin(), quiet.end(), [line](cmROStringT words) {
                                  return line.find(words) != cmROStringT::npos;
                              });
        if (!harmless)
            return false;
    }
    return true;
}
