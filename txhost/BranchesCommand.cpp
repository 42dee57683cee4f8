#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/WaitProgress.h"

#include <optional>
#include <utility>

namespace {

void printBranch(std::int32_t number, const cmStringT& name, const cmStringT& hash, bool json)
{
    const bool current = number == 0;
    if (json) {
        Json object{{"number", number}};
        addName(object, "name", name);
        object["hash"] = jsonString(hash);
        object["current"] = current;
        printJson(std::move(object));
        return;
    }
    const cmStringT shown = console::printable(name);
    console::printLine(cmStringT(cmCat(current ? "* " : "  ") + console::coloured(console::yellow, shortHash(hash)) + "  "
                                 + (current ? console::coloured(console::green, shown) : shown)));
}

}  // namespace

int runBranches(const HostOptions& options, const std::string& named)
{
    const cmStringT repository = browsedDirectory(named);
    Host host(options);
    console::catchInterrupts();
    Browser browser(host, repository, {});
    std::optional<WaitProgress> progress(std::in_place, cmCat("the branches of ") + repository);
    const bool ended = browser.waitFor([&] { return browser.hasBranches(); });
    progress.reset();
    if (!ended)
        return reportInterrupt(options, repository);
    for (std::int32_t number = 0;; ++number) {
        const cmStringT name = browser.branchName(number);
        const cmStringT hash = browser.branchHash(number);
        const bool none = name.isEmpty() && hash.isEmpty();
        if (none && number > 0) {
            if (number > 1 || !browser.branchHash(0).isEmpty())
                return browser.reportFailures(txGitLoadBranches);
            browser.waitFor([] { return false; });  // its end tells whether there are no commits
            return browser.reportFailures();
        }
        if (!none)  // branch 0, the current one, has no name before its first commit
            printBranch(number, name, hash, options.json);
    }
}
