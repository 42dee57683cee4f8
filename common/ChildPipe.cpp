#include "common/ChildPipe.h"

void ChildPipe::closeChildEnd()
{
    closeEnd(childEnd);
}

void ChildPipe::close()
{
    closeEnd(childEnd);
    closeEnd(parentEnd);
    ended = false;
}
