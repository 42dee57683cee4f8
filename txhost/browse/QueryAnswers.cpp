#include "txhost/browse/QueryAnswers.h"

#include "common/cmStringCatHelper.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

constexpr std::chrono::milliseconds restOfCursor{60};  // before a commit is asked about: the cursor may only pass by
constexpr std::chrono::milliseconds shortestPause{200};
constexpr std::chrono::seconds longestPause{10};
constexpr std::chrono::milliseconds untilLoaded{200};
constexpr std::chrono::seconds untilRetry{2};  // of a query about the working copy that has failed

const cmStringT workingCopyHash("");

cmStringT changesText(const CommitDetails& workingCopy)
{
    if (!workingCopy.failure.isNull())
        return cmCat("not known: ") + workingCopy.failure;
    const auto count = [&](bool FileChange::*flag) {
        return std::count_if(workingCopy.files.begin(), workingCopy.files.end(),
                             [flag](const FileChange& file) { return file.*flag; });
    };
    const auto modified = count(&FileChange::isUnstaged);
    const auto staged = count(&FileChange::isStaged);
    std::string text = modified > 0 ? std::to_string(modified) + " modified" : "";
    if (staged > 0)
        text += (text.empty() ? "" : ", ") + std::to_string(staged) + " staged";
    return text.empty() ? cmStringT("nothing modified or staged") : cmStringT(text);
}

}  // namespace

QueryAnswers::QueryAnswers(Host& host, BrowseExchange& exchange)
    : m_host(host), m_exchange(exchange), m_watch(exchange), m_pause(shortestPause)
{
}

void QueryAnswers::want(const BrowseWants& wants, const std::optional<RepositoryPlace>& place)
{
    if (place && place != m_place)
        begin(*place);
    if (wants.load != m_load) {
        m_load = wants.load;
        m_isWorkingCopyDue = true;
    }
    if (wants.details != m_wantedDetails || wants.detailsNumber != m_detailsNumber) {
        m_wantedDetails = wants.details;
        m_detailsNumber = wants.detailsNumber;
        m_details = {};
        m_details.hash = wants.details.value_or(workingCopyHash);
        m_stage = wants.details ? Stage::message : Stage::nothing;
        m_due = Clock::now() + restOfCursor;
    }
    if (wants.history != m_question || wants.historyNumber != m_historyNumber) {
        m_question = wants.history;
        m_historyNumber = wants.historyNumber;
        m_fileHistoryDue = m_question ? Clock::now() : Clock::time_point::max();
    }
}

void QueryAnswers::begin(const RepositoryPlace& place)
{
    m_place = place;
    m_queries.emplace(m_host, place.root);
    m_live.reset();
    if (place.isBare)
        tellWorkingCopy("no working copy");
    else if (!place.index.isEmpty())
        m_live.emplace(m_host, place);
    m_isWorkingCopyDue = true;
}

bool QueryAnswers::goOn(BrowsedHistory& history)
{
    const bool hasFirstRows = history.state().rowCount > 0 || !history.isLoading();
    if (!m_queries || !hasFirstRows)
        return false;
    if (m_live) {
        m_live->goOn();
        m_isWorkingCopyDue |= m_live->takeChanged();
    }
    m_isLoading = history.isLoading();
    const Clock::time_point now = Clock::now();
    if (m_stage == Stage::message && now >= m_due)
        askMessage(history);
    else if (m_stage == Stage::changes && now >= m_due)
        askChanges();
    else if (now >= m_fileHistoryDue)
        askFileHistory();
    else if (m_isWorkingCopyDue && !m_place->isBare && now >= m_workingCopyDue)
        askWorkingCopy();
    else
        return false;
    return true;
}

QueryAnswers::Clock::time_point QueryAnswers::next() const
{
    if (!m_queries)
        return Clock::time_point::max();
    Clock::time_point next = m_stage == Stage::nothing ? m_fileHistoryDue : std::min(m_due, m_fileHistoryDue);
    if (m_isWorkingCopyDue && !m_place->isBare)
        next = std::min(next, m_workingCopyDue);
    return m_live ? std::min(next, m_live->nextLook()) : next;
}

/// Asks for the part of the details that is known first: a commit's message, and the names of the changed files.
void QueryAnswers::askMessage(BrowsedHistory& history)
{
    CommitDetails details = m_details;
    if (details.hash.isEmpty()) {
        if (!m_place->isBare && !ask([&] { details = m_queries->workingCopy(); }))
            return;
        if (!m_place->isBare)
            takeWorkingCopy(details);
        return tellDetails(std::move(details), Stage::changes);
    }
    history.fill(details);
    MessageAnswer answer = MessageAnswer::complete;
    if (!ask([&] { answer = m_queries->addMessage(details); }))
        return;
    if (answer == MessageAnswer::notLoaded && m_isLoading) {
        m_due = Clock::now() + untilLoaded;
        return;
    }
    if (answer == MessageAnswer::notLoaded)
        details.failure = "the history does not have this commit";
    tellDetails(std::move(details), answer == MessageAnswer::complete ? Stage::changes : Stage::nothing);
}

void QueryAnswers::askChanges()
{
    CommitDetails details = m_details;
    const bool isWorkingCopy = details.hash.isEmpty();
    if (ask([&] { isWorkingCopy ? m_queries->addWorkingChanges(details) : m_queries->addChanges(details); }))
        tellDetails(std::move(details), Stage::nothing);
}

void QueryAnswers::askFileHistory()
{
    const FileQuestion question = *m_question;
    FileHistory history;
    const auto isWanted = [&question](const BrowseWants& wants) { return wants.history == question; };
    if (!run(isWanted, [&] { history = m_queries->history(question); })) {
        m_fileHistoryDue = Clock::now() + m_pause;
        return;
    }
    m_fileHistoryDue = Clock::time_point::max();
    BrowseNews news;
    news.history = std::make_shared<const FileHistory>(std::move(history));
    m_exchange.tell(std::move(news));
}

/// Asks what the working copy's row says, when nothing else is to be done: the query ends when something else is wanted.
void QueryAnswers::askWorkingCopy()
{
    CommitDetails workingCopy;
    if (!run(nullptr, [&] { workingCopy = m_queries->workingCopy(); })) {
        m_workingCopyDue = Clock::now() + m_pause;
        return;
    }
    takeWorkingCopy(workingCopy);
    if (m_stage == Stage::nothing && m_wantedDetails && m_wantedDetails->isEmpty()) {  // shown, and no longer true
        m_details = std::move(workingCopy);
        m_stage = Stage::changes;
        m_due = Clock::now();
    }
}

/// Runs a query. Returns whether its answer counts. If not, it has to be asked again, behind a growing pause when it was in the
/// way of others: of a loading history, too.
bool QueryAnswers::run(const QueryWatch::IsWanted& isWanted, const std::function<void()>& query)
{
    const bool counts = m_watch.run(isWanted, m_isLoading, query);
    m_pause = counts ? shortestPause : std::min<std::chrono::milliseconds>(m_pause * 2, longestPause);
    return counts;
}

/// Runs a query about the details. Returns whether its answer counts; if not, it is asked again when the details are still
/// wanted.
bool QueryAnswers::ask(const std::function<void()>& query)
{
    const std::optional<cmStringT> wanted = m_wantedDetails;
    const bool counts = run([&wanted](const BrowseWants& wants) { return wants.details == wanted; }, query);
    if (!counts)
        m_due = Clock::now() + m_pause;
    return counts;
}

void QueryAnswers::takeWorkingCopy(CommitDetails& workingCopy)
{
    m_isWorkingCopyDue = !workingCopy.failure.isNull();
    m_workingCopyDue = Clock::now() + (m_isWorkingCopyDue ? untilRetry : std::chrono::seconds(0));
    if (m_live && workingCopy.failure.isNull())
        workingCopy.failure = m_live->failure();
    tellWorkingCopy(changesText(workingCopy));
}

/// `next` is what is asked then; when that is nothing, the details are complete.
void QueryAnswers::tellDetails(CommitDetails details, Stage next)
{
    m_stage = next;
    m_due = Clock::now();
    details.isComplete = next == Stage::nothing;
    BrowseNews news;
    news.details = std::make_shared<const CommitDetails>(details);
    m_exchange.tell(std::move(news));
    m_details = details.isComplete ? CommitDetails() : std::move(details);
}

void QueryAnswers::tellWorkingCopy(const cmStringT& text)
{
    if (text == std::exchange(m_toldText, text))
        return;
    BrowseNews news;
    news.workingCopy = text;
    m_exchange.tell(std::move(news));
}
