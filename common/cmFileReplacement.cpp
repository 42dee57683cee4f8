#include "common/cmFileReplacement.h"

#include "common/cmSystemPath.h"

#include <random>
#include <string>
#include <system_error>

namespace {

/// Nobody else's name in the folder, and short: a name may be as long as the system lets it be.
std::string nameBeside()
{
    std::random_device random;
    return ".new-" + std::to_string(random()) + "-" + std::to_string(random());
}

}  // namespace

cmFileReplacement::cmFileReplacement(cmROStringT path)
    : m_path(cmSystemPath(path)), m_beside(m_path.parent_path() / nameBeside()), m_file(m_beside, std::ios::binary)
{
}

cmFileReplacement::~cmFileReplacement()
{
    m_file.close();
    std::error_code ignored;
    std::filesystem::remove(m_beside, ignored);
}

void cmFileReplacement::write(cmROStringT bytes)
{
    m_file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

bool cmFileReplacement::finish()
{
    m_file.close();
    if (!m_file)
        return false;
    return putInPlace();
}
