#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/InterruptWatch.h"
#include "txhost/browse/BrowseSession.h"
#include "txhost/browse/DumpFront.h"
#include "txhost/browse/TerminalFront.h"

#include <charconv>
#include <memory>
#include <optional>
#include <utility>

namespace {

constexpr std::size_t largestSide = 1000;

/// Takes a number from the front of `text`; 0 when there is none that a screen may have.
std::size_t takeSide(cmROStringT& text)
{
    std::size_t side = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
    if (error != std::errc() || side > largestSide)
        return 0;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return side;
}

Picture::Size sizeFromText(cmROStringT text)
{
    Picture::Size size;
    size.width = takeSide(text);
    const bool hasCross = text.starts_with('x');
    text.remove_prefix(hasCross ? 1 : 0);
    size.height = takeSide(text);
    if (!hasCross || size.width == 0 || size.height == 0 || !text.empty())
        throw UsageError("--dump takes WIDTHxHEIGHT, such as 80x24, up to 1000x1000");
    return size;
}

cmArray<Key> keysOf(const BrowseOptions& wanted)
{
    std::optional<cmArray<Key>> keys = keysFromText(wanted.keys);
    if (!keys)
        throw UsageError("--keys takes characters and names such as <Enter>; docs/txhost.md lists them");
    return std::move(*keys);
}

std::unique_ptr<Terminal> openTerminal(const HostOptions& options)
{
    if (options.debug && console::isErrorTerminal())
        throw UsageError("browse --debug would write over the screen; add 2>FILE");
    return Terminal::open(console::isColoured());
}

/// Shows the screen until the user leaves it.
void browse(const HostOptions& options, const cmStringT& repository, BrowseFront& front)
{
    Host host(options);
    BrowseExchange exchange([&host] { host.editor().post([] {}); }, [&front] { front.wake(); });
    BrowseSession session(host, repository, exchange);
    front.begin(repository, exchange);
    try {
        session.run();
    } catch (...) {
        front.end();
        throw;
    }
    front.end();
}

}  // namespace

int runBrowse(const HostOptions& options, const std::string& named, const BrowseOptions& wanted)
{
    if (options.json)
        throw UsageError("browse shows a screen: it has no --json, but log has");
    const cmStringT repository = browsedDirectory(named);
    if (wanted.dump.empty()) {
        TerminalFront front(openTerminal(options));
        browse(options, repository, front);
        front.finish();
    } else {
        DumpFront front(sizeFromText(wanted.dump), keysOf(wanted));
        const InterruptWatch interrupts(repository);
        browse(options, repository, front);
        interrupts.check();
        front.finish();
    }
    return 0;
}
