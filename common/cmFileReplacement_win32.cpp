#include "common/cmFileReplacement.h"

#include <system_error>

bool cmFileReplacement::putInPlace() const
{
    std::error_code error;
    std::filesystem::rename(m_beside, m_path, error);
    return !error;
}
