#include "txhost/browse/BrowseFront.h"

#include "txhost/Console.h"
#include "txhost/Failure.h"

#include <exception>
#include <string>

namespace {

/// Tells the session of the end, whatever has brought it.
struct Leaving {
    BrowseExchange& exchange;
    ~Leaving()
    {
        try {
            exchange.leave();
        } catch (const std::exception&) {  // no memory to wake the session with: it sees the end when it wakes
        }
    }
};

}  // namespace

void BrowseFront::begin(const cmStringT& repository, BrowseExchange& exchange)
{
    m_repository = repository;
    m_exchange = &exchange;
    if (start() != 0)
        throw HostError("no thread can be had");
}

void BrowseFront::end()
{
    requestStop();
    wake();
    join();
}

void BrowseFront::finish()
{
    if (getStatus() == cmThreadFailed)
        throw HostError("memory ran out");
    if (!m_failure.isNull())
        throw HostError(std::string(m_failure.view()));
}

std::int32_t BrowseFront::run()
{
    const Leaving leaving{*m_exchange};
    try {
        BrowseScreen screen(m_repository, console::showsUTF8() ? Symbols::unicode : Symbols::plain);
        show(screen, *m_exchange);
    } catch (const std::exception& error) {
        m_failure = error.what();
    }
    return 0;
}
