#include "filewatcher/PerforceOutput.h"

#include "common/cmStringCatHelper.h"

#include <algorithm>
#include <array>

namespace {

constexpr cmROStringT blanks = " \t";

/// Takes the first line off `text`, without its end.
cmROStringT takeLine(cmROStringT& text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    cmROStringT line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

cmROStringT trimmed(cmROStringT text)
{
    const std::size_t start = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

/// The value of the field `name` ("Root:") on this line of a form; null when the line is another.
cmStringT fieldValue(cmROStringT line, cmROStringT name)
{
    if (!line.starts_with(name))
        return {};
    cmROStringT value = trimmed(line.substr(name.size()));
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        value = value.substr(1, value.size() - 2);
    return value;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// The characters that mean something in the client's own syntax (@ # * %) are written there as % and two digits.
cmStringT decoded(cmROStringT text)
{
    cmStringT plain("");
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 && hexDigit(text[i + 2]) >= 0;
        plain += escape ? static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2])) : text[i];
        i += escape ? 2 : 0;
    }
    return plain;
}

}  // namespace

PerforceClient parsePerforceClient(cmROStringT form, cmPathStyle style)
{
    PerforceClient client;
    while (!form.empty()) {
        const cmROStringT line = takeLine(form);
        if (const cmStringT name = fieldValue(line, "Client:"); !name.isEmpty())
            client.name = name;
        if (const cmStringT root = fieldValue(line, "Root:"); !root.isEmpty() && root != "null")
            client.root = cmWithoutTrailingSeparator(cmNativeSeparators(root, style), style);
    }
    return client;
}

cmArray<cmStringT> parsePerforceOpened(cmROStringT output, const PerforceClient& client, cmPathStyle style)
{
    constexpr cmROStringT field = "... clientFile ";
    const cmStringT prefix = cmCat("//") + client.name + "/";
    cmArray<cmStringT> files;
    while (!output.empty()) {
        const cmROStringT line = takeLine(output);
        if (!line.starts_with(field) || !line.substr(field.size()).starts_with(prefix))
            continue;
        const cmStringT path = cmNativeSeparators(decoded(line.substr(field.size() + prefix.length())), style);
        if (!path.isEmpty())
            files.push_back(client.root.isEmpty() ? path : cmJoinPath(client.root, path, style));
    }
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

cmArray<cmStringT> parsePerforceSync(cmROStringT output, cmPathStyle style)
{
    cmArray<cmStringT> files;
    while (!output.empty()) {
        const cmROStringT line = takeLine(output);
        for (const cmROStringT action : {cmROStringT(" - updating "), cmROStringT(" - deleted as ")}) {
            // Behind the first "#": a depot path holds none, its own are escaped, and what follows may hold anything.
            const std::size_t start = line.find(action, std::min(line.find('#'), line.size()));
            if (start == cmROStringT::npos || !line.starts_with("//"))
                continue;
            const cmROStringT path = line.substr(start + action.size());
            if (cmIsAbsolutePath(path, style))
                files.push_back(cmNativeSeparators(path, style));
            break;
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
