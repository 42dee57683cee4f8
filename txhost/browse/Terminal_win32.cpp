#include "txhost/browse/Terminal.h"

#include "txhost/Failure.h"

std::unique_ptr<Terminal> Terminal::open(bool)
{
    throw HostError("the full screen is for terminals of Linux; browse --dump WIDTHxHEIGHT prints one screen");
}
