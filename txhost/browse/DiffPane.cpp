#include "txhost/browse/DiffPane.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t shiftStep = 20;
constexpr std::size_t mostShift = 10'000;

/// How a line is drawn that begins with these signs, one for each parent.
TextStyle styleOf(cmROStringT signs)
{
    const auto has = [signs](char sign) { return signs.find(sign) != cmROStringT::npos; };
    return {has('+') ? console::green : has('-') ? console::red : has('\\') ? console::grey : 0};
}

/// How many signs are in front of each line of the hunk.
std::size_t signCount(const DiffHunk& hunk)
{
    const std::size_t count = std::min(hunk.header.view().find_first_not_of('@'), hunk.header.length());
    return std::max<std::size_t>(count, 2) - 1;
}

}  // namespace

void DiffPane::open(std::shared_ptr<const CommitDetails> details, std::size_t file)
{
    m_details = std::move(details);
    m_file = file;
    m_shift = 0;
    countLines();
    m_window.place(0, 0);
}

bool DiffPane::update(std::shared_ptr<const CommitDetails> details)
{
    const cmArray<FileChange>& files = details->files;
    const auto same =
        std::find_if(files.begin(), files.end(), [this](const FileChange& other) { return other.path == file().path; });
    if (same == files.end())
        return false;
    m_file = static_cast<std::size_t>(same - files.begin());
    m_details = std::move(details);
    countLines();
    return true;
}

void DiffPane::turn(std::int32_t step)
{
    const std::int64_t next = static_cast<std::int64_t>(m_file) + step;
    if (next >= 0 && next < static_cast<std::int64_t>(m_details->files.size()))
        open(m_details, static_cast<std::size_t>(next));
}

void DiffPane::countLines()
{
    m_starts = {0};
    for (const DiffHunk& hunk : file().hunks)
        m_starts.push_back(m_starts.back() + 1 + hunk.lines.size());
    m_window.setCount(static_cast<std::int32_t>(m_starts.back()));
}

bool DiffPane::shift(bool isToRight)
{
    if (!isToRight && m_shift == 0)
        return false;
    m_shift = isToRight ? std::min(m_shift + shiftStep, mostShift) : m_shift - shiftStep;
    return true;
}

cmStringT DiffPane::title() const
{
    const cmStringT number = cmROStringT(std::to_string(m_file + 1) + "/" + std::to_string(m_details->files.size()) + "  ");
    return cmCat(number) + cmROStringT(&file().kind, 1) + " " + file().path;
}

cmROStringT DiffPane::remark() const
{
    if (!m_details->isComplete)
        return "…";
    if (file().isBinary)
        return "binary";
    return m_details->parents.size() > 1 ? "as in one of the parents" : "no line has changed";
}

cmArray<cmArray<StyledText>> DiffPane::lines(std::size_t width, Symbols symbols, bool hasFocus) const
{
    cmArray<cmArray<StyledText>> lines;
    if (m_window.count() == 0) {
        StyledLine line(width, symbols);
        line.draw(remark(), {console::grey});
        lines.push_back(std::move(line).finished());
    }
    for (std::int32_t i = m_window.first(); i < m_window.end(); ++i) {
        StyledLine line(width, symbols);
        draw(line, static_cast<std::size_t>(i));
        lines.push_back(std::move(line).finished(i == m_window.cursor(), hasFocus));
    }
    return lines;
}

void DiffPane::draw(StyledLine& line, std::size_t number) const
{
    const auto next = std::upper_bound(m_starts.begin(), m_starts.end(), number);
    const DiffHunk& hunk = file().hunks[static_cast<std::size_t>(next - m_starts.begin()) - 1];
    const std::size_t inHunk = number - *(next - 1);
    if (inHunk == 0) {
        line.add(hunk.header, {console::cyan});
        return;
    }
    const cmROStringT text = hunk.lines[inHunk - 1];
    const cmROStringT signs = text.substr(0, std::min(text.size(), signCount(hunk)));
    line.add(signs, styleOf(signs));
    line.add(textBehind(text.substr(signs.size()), m_shift, line.room()), styleOf(signs));
}
