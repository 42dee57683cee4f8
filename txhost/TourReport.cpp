#include "txhost/TourReport.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/WaitProgress.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

namespace {

void printStep(cmROStringT what, const TourOutcome& outcome, double milliseconds)
{
    const cmStringT mark = outcome.ok ? console::coloured(console::green, "ok    ") : console::coloured(console::red, "FAILED");
    std::array<char, 32> taken{};
    std::snprintf(taken.data(), taken.size(), " %6.1f ms  ", milliseconds);
    const bool isTold = outcome.isShown && !outcome.detail.isEmpty();
    console::printLine(cmStringT(cmCat("  ") + mark + taken.data() + what + (isTold ? ": " : "")
                                 + (isTold ? console::printable(outcome.detail) : cmStringT(""))));
}

void printNextCommands()
{
    console::printLine(console::coloured(console::cyan, "Next, on your own files (in the sources ./run instead of txhost):"));
    for (const char* line : {"  txhost status --recurse DIR    which files are modified, in every repository",
                             "  txhost log --max 20            the history of this directory, with its graph",
                             "  txhost watch                   what changes in it, until Ctrl-C"})
        console::printLine(line);
}

}  // namespace

void TourReport::part(cmROStringT feature, cmROStringT reason)
{
    m_feature = feature;
    if (m_json || console::wasInterrupted())
        return;
    const cmStringT padded = cmCat(feature) + cmStringT(cmROStringT(std::string(14 - feature.size(), ' ')));
    console::printLine(cmStringT(cmCat(console::coloured(console::cyan, padded)) + reason));
}

void TourReport::step(cmROStringT what, const std::function<TourOutcome()>& body)
{
    if (console::wasInterrupted())
        return;
    const auto start = std::chrono::steady_clock::now();
    std::optional<WaitProgress> progress(std::in_place, cmStringT(what));
    const TourOutcome outcome = body();
    progress.reset();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    if (console::wasInterrupted())
        return;
    if (!outcome.ok)
        ++m_failures;
    if (!m_json) {
        printStep(what, outcome, time.count());
        return;
    }
    printJson({{"feature", jsonString(m_feature)},
               {"what", jsonString(what)},
               {"ok", outcome.ok},
               {"ms", time.count()},
               {"detail", jsonString(outcome.detail)}});
}

int TourReport::end() const
{
    if (console::wasInterrupted()) {
        console::printInterrupted();
        return 1;
    }
    if (!m_json)
        printNextCommands();
    return m_failures == 0 ? 0 : 1;
}
