#include "txhost/CommitJson.h"

#include "txhost/Console.h"
#include "txhost/TimeText.h"

Json commitJson(const GitCommitInfo& commit)
{
    Json object = Json::object();
    if (!commit.hash.isEmpty())
        object["hash"] = jsonString(commit.hash);
    addNames(object, "parents", parentsOf(commit));
    if (!commit.hash.isEmpty()) {
        object["author"] = jsonString(commit.authorName);
        object["email"] = jsonString(commit.authorEmail);
        const cmStringT date = commit.date.isSet() ? rfc3339(commit.date.unpacked()) : cmStringT();
        if (date.isNull())
            console::noteMissingDate();
        else
            object["date"] = jsonString(date);
    }
    object["subject"] = jsonString(commit.subject);
    if (!commit.message.isNull())
        object["message"] = jsonString(commit.message);
    return object;
}

cmArray<cmStringT> parentsOf(const GitCommitInfo& commit)
{
    cmArray<cmStringT> parents = commit.otherParents;
    if (!commit.firstParent.isEmpty())
        parents.insert(parents.begin(), commit.firstParent);
    return parents;
}
