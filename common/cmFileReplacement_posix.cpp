#include "common/cmFileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

bool cmFileReplacement::putInPlace() const
{
    // A file system may write out all of a file that is renamed over another, so that a crash leaves one of the two, and the
    // caller waits for the disk. Exchanged, and the old one then removed, the two are as safe from readers.
    struct stat old {};
    if (lstat(m_path.c_str(), &old) == 0 && S_ISREG(old.st_mode)
        && renameat2(AT_FDCWD, m_beside.c_str(), AT_FDCWD, m_path.c_str(), RENAME_EXCHANGE) == 0)
        return true;
    return std::rename(m_beside.c_str(), m_path.c_str()) == 0;
}
