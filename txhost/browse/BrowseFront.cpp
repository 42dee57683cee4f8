#include "txhost/browse/BrowseFront.h"

#include "txhost/Console.h"
#include "txhost/Failure.h"

#include <exception>
#include <string>

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
    if (!m_failure.isNull())
        throw HostError(std::string(m_failure.view()));
}

std::int32_t BrowseFront::run()
{
    try {
        BrowseScreen screen(m_repository, console::showsUTF8() ? Symbols::unicode : Symbols::plain);
        show(screen, *m_exchange);
    } catch (const std::exception& error) {
        m_failure = error.what();
    }
    m_exchange->leave();
    return 0;
}
