#include "filewatcher/git/query/GitCommitTable.h"

#include "filewatcher/bridge/EditorVariables.h"
#include "filewatcher/git/commits/DateTimeText.h"

namespace {

void setText(TXHVAR table, TXPSZ key, const cmStringT& text)
{
    if (const TXHVAR element = txHvarHashElement(table, key, 0))
        txHvarSetString(element, text);
}

void setTextUnlessEmpty(TXHVAR table, TXPSZ key, const cmStringT& text)
{
    if (!text.isEmpty())
        setText(table, key, text);
}

void setTexts(TXHVAR table, TXPSZ key, const cmArray<cmStringT>& texts)
{
    if (const TXHVAR element = txHvarHashElement(table, key, 0))
        storeTexts(element, texts);
}

}  // namespace

void fillCommitTable(TXHVAR table, const GitCommitInfo& commit, const GitCommitText& text)
{
    setTextUnlessEmpty(table, "hash", commit.hash);
    setTextUnlessEmpty(table, "parentHash", commit.firstParent);
    setTexts(table, "otherParents", commit.otherParents);
    setTextUnlessEmpty(table, "authorName", commit.authorName);
    setTextUnlessEmpty(table, "authorEmail", commit.authorEmail);
    setText(table, "committerDate", dateTimeText(commit.date));
    setText(table, "comment", commit.subject);
    setTexts(table, "longComment", text.message);
    setTexts(table, "modifiedFiles", text.files);
    setTexts(table, "stagedFiles", commit.stagedFiles.names());
}
