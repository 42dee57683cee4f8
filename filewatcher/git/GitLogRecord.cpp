#include "filewatcher/git/GitLogRecord.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr char recordEnd = '\x01';
constexpr std::ptrdiff_t separators = 5;

std::int64_t parseTime(cmROStringT digits)
{
    std::int64_t time = noCommitTime;
    std::from_chars(digits.data(), digits.data() + digits.size(), time);
    return time;
}

bool parseRecord(cmROStringT text, GitLogRecord& record)
{
    text.remove_prefix(std::min(text.find_first_not_of('\n'), text.size()));
    if (std::count(text.begin(), text.end(), '\0') < separators)
        return false;
    record.hash = takeUntil(text, '\0');
    record.parents = takeUntil(text, '\0');
    record.time = parseTime(takeUntil(text, '\0'));  // to the NUL: times before 2001 have fewer than ten digits
    record.authorEmail = takeUntil(text, '\0');
    record.authorName = takeUntil(text, '\0');
    record.subject = text;
    return true;
}

}  // namespace

cmROStringT takeUntil(cmROStringT& text, char end)
{
    const std::size_t length = std::min(text.find(end), text.size());
    const cmROStringT taken = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return taken;
}

bool takeGitLogRecord(cmROStringT& batch, GitLogRecord& record)
{
    while (!batch.empty()) {
        if (parseRecord(takeUntil(batch, recordEnd), record))
            return true;
    }
    return false;
}
