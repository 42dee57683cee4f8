#include "txhost/browse/BrowseScreen.h"

#include "common/cmStringCatHelper.h"
#include "txhost/browse/KeyHelp.h"
#include "txhost/browse/NameChoice.h"

#include <algorithm>
#include <utility>

namespace {

constexpr char32_t ctrlC = 3;
constexpr std::int32_t wheelLines = 3;
constexpr std::size_t mostChoices = 20;

bool isMouse(const Key& key)
{
    return key.kind == KeyKind::click || key.kind == KeyKind::doubleClick || key.kind == KeyKind::wheelUp
           || key.kind == KeyKind::wheelDown;
}

}  // namespace

void BrowseScreen::press(const Key& key)
{
    m_message.clear();
    handle(key);
    arrange();
}

void BrowseScreen::handle(const Key& key)
{
    const char32_t code = key.kind == KeyKind::character ? key.code : 0;
    if (code == ctrlC || (code == 'q' && !m_prompt))
        m_hasLeft = true;
    else if (m_helpPage)
        m_helpPage = *m_helpPage + 1 < keyHelpPages(m_size) ? std::optional(*m_helpPage + 1) : std::nullopt;
    else if (isMouse(key))
        pressMouse(key);
    else if (m_prompt)
        pressInPrompt(key);
    else if (pressInPane(key))
        return;
    else if (key.kind == KeyKind::enter || key.kind == KeyKind::right || code == 'l')
        goIn();
    else if (key.kind == KeyKind::escape || key.kind == KeyKind::left || key.kind == KeyKind::backspace || code == 'h')
        goBack(key.kind == KeyKind::escape);
    else if (key.kind == KeyKind::tab || key.kind == KeyKind::backTab)
        below().hasFocus = below().isOpen && !below().hasFocus;
    else if (code != 0)
        command(code);
}

bool BrowseScreen::pressInPane(const Key& key)
{
    if (hasFocusBelow())
        return below().commit.press(key);
    if (m_revisions.isOpen())
        return m_revisions.window().press(key);
    const bool hasMoved = m_history.press(key);
    if (hasMoved)
        m_finder.cancel();
    return hasMoved;
}

void BrowseScreen::pressMouse(const Key& key)
{
    const Layout parts = layout();
    const bool isBelow = key.row >= parts.list;
    if (key.row >= parts.list + parts.bar + parts.commit)
        return;
    const bool isWheel = key.kind == KeyKind::wheelUp || key.kind == KeyKind::wheelDown;
    const std::int32_t lines = key.kind == KeyKind::wheelUp ? -wheelLines : wheelLines;
    if (!isWheel)
        below().hasFocus = isBelow;
    if (isBelow || m_revisions.isOpen()) {
        ListWindow& window = isBelow ? below().commit.window() : m_revisions.window();
        if (isWheel)
            window.scroll(lines);
        else
            window.click(key.row - (isBelow ? parts.list + parts.bar : 0));
    } else {
        m_finder.cancel();
        isWheel ? m_history.scroll(lines) : m_history.click(key.row);
    }
    if (key.kind == KeyKind::doubleClick)
        goIn();
}

void BrowseScreen::goIn()
{
    Below& pane = below();
    if (!pane.isOpen || !pane.hasFocus) {
        pane.hasFocus = pane.isOpen || !hasRoomForBoth();
        pane.isOpen = true;
        return;
    }
    const cmStringT hash = pane.commit.commit();
    if (!hash.isNull())
        goTo(hash);
    else
        pane.commit.openDiff();
}

void BrowseScreen::goBack(bool isEscape)
{
    Below& pane = below();
    if (hasFocusBelow()) {
        if (pane.commit.closeDiff())
            return;
        pane.hasFocus = false;
        pane.isOpen = hasRoomForBoth();
    } else if (m_revisions.isOpen()) {
        m_revisions.close();
    } else if (pane.isOpen) {
        pane.isOpen = false;
    } else if (isEscape) {
        m_wants.filter = "";
    }
}

void BrowseScreen::command(char32_t code)
{
    switch (code) {
    case '/': return openPrompt(PromptKind::search);
    case 'f':
    case '&': return openPrompt(PromptKind::filter);
    case ':': return openPrompt(PromptKind::jump);
    case 'n': return searchOn(false);
    case 'N': return searchOn(true);
    case 'p': return goToParent();
    case 'c': return goToChild();
    case '@': return goToHead();
    case 'o':
    case '>': return followLine(true);
    case '<': return followLine(false);
    case 'H': return openRevisions(false);
    case 'L': return openRevisions(true);
    case 'y': return copy();
    case 'R': ++m_wants.load; return;
    case '?': m_helpPage = 0; return;
    default: return;
    }
}

void BrowseScreen::openPrompt(PromptKind kind)
{
    m_promptRow = m_history.window().cursor();
    m_promptEdition = m_history.state().edition;
    m_promptHash = m_history.selectedHash();
    m_prompt.emplace(kind, kind == PromptKind::filter ? m_wants.filter : cmStringT(""));
    m_revisions.close();
    changePrompt();
}

void BrowseScreen::pressInPrompt(const Key& key)
{
    switch (m_prompt->press(key)) {
    case Prompt::Outcome::nothing: return;
    case Prompt::Outcome::changed: return changePrompt();
    case Prompt::Outcome::accepted: return acceptPrompt();
    case Prompt::Outcome::cancelled: return cancelPrompt();
    }
}

void BrowseScreen::changePrompt()
{
    const cmStringT& text = m_prompt->text();
    switch (m_prompt->kind()) {
    case PromptKind::filter: m_wants.filter = text; break;
    case PromptKind::search:
        if (text.isEmpty())
            goBackFromPrompt();
        else
            m_finder.start(RowFinder::Purpose::match, SearchKind::text, text, m_promptRow);
        break;
    case PromptKind::jump:
        if (const auto& names = m_history.state().names)
            m_prompt->offer(namesLike(*names, text, mostChoices));
        break;
    }
}

void BrowseScreen::acceptPrompt()
{
    const Prompt prompt = *std::exchange(m_prompt, std::nullopt);
    if (prompt.kind() == PromptKind::jump && !prompt.text().isEmpty())
        jumpTo(prompt.text());
    if (prompt.kind() == PromptKind::search && !prompt.text().isEmpty())
        m_searched = prompt.text();
}

void BrowseScreen::cancelPrompt()
{
    const PromptKind kind = std::exchange(m_prompt, std::nullopt)->kind();
    if (kind == PromptKind::filter)
        m_wants.filter = "";
    if (kind == PromptKind::search)
        goBackFromPrompt();
}

void BrowseScreen::openRevisions(bool fromHead)
{
    const CommitDetails* details = below().commit.details();
    const FileChange* file = hasFocusBelow() ? below().commit.file() : nullptr;
    if (!file)
        return say("no file here: its line in the details is the place for this key");
    FileQuestion question{file->path, fromHead ? cmStringT("") : details->hash};
    m_ofRevisions = {{}, hasRoomForBoth(), false};
    m_revisions.open(std::move(question));
    ++m_wants.historyNumber;
}

void BrowseScreen::copy()
{
    const CommitPane& commit = below().commit;
    if (hasFocusBelow() && commit.file())
        m_copied = commit.file()->path;
    else if (hasFocusBelow() && !commit.commit().isNull())
        m_copied = commit.commit();
    else if (const std::optional<cmStringT> hash = selectedHash(); hash && !hash->isEmpty())
        m_copied = *hash;
    else
        return say("nothing to copy: the working copy has no hash");
    say(cmCat("copied ") + m_copied, false);
}

void BrowseScreen::say(cmStringT message, bool isBadNews)
{
    m_message = std::move(message);
    m_isBadNews = isBadNews;
}
