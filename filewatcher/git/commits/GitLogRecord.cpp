#include "filewatcher/git/commits/GitLogRecord.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::ptrdiff_t separators = 5;

bool parseRecord(cmROStringT text, GitLogRecord& record)
{
    text.remove_prefix(std::min(text.find_first_not_of('\n'), text.size()));
    if (std::count(text.begin(), text.end(), '\0') < separators)
        return false;
    record.hash = cmTakeUntil(text, '\0');
    record.parents = cmTakeUntil(text, '\0');
    record.time = parseCommitTime(cmTakeUntil(text, '\0'));  // of any length: times before 2001 have fewer than ten digits
    record.authorEmail = cmTakeUntil(text, '\0');
    record.authorName = cmTakeUntil(text, '\0');
    record.subject = text;
    return true;
}

}  // namespace

std::int64_t parseCommitTime(cmROStringT digits)
{
    std::int64_t time = noCommitTime;
    std::from_chars(digits.data(), digits.data() + digits.size(), time);
    return time;
}

bool takeGitLogRecord(cmROStringT& batch, GitLogRecord& record)
{
    while (!batch.empty()) {
        if (parseRecord(cmTakeUntil(batch, gitRecordEnd), record))
            return true;
    }
    return false;
}
