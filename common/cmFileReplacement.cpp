#include "common/cmFileReplacement.h"

#include "common/cmFile.h"
#include "common/cmSystemPath.h"

#include <random>
#include <string>
#include <system_error>

namespace {

/// A name that no other file has. It is short, as the final name may have the greatest length that the system allows.
std::string temporaryName()
{
    std::random_device random;
    return ".new-" + std::to_string(random()) + "-" + std::to_string(random());
}

}  // namespace

cmFileReplacement::cmFileReplacement(cmROStringT path)
    : m_path(cmSystemPath(path)), m_temporary(m_path.parent_path() / temporaryName()), m_file(m_temporary, std::ios::binary)
{
}

cmFileReplacement::~cmFileReplacement()
{
    m_file.close();
    std::error_code ignored;
    std::filesystem::remove(m_temporary, ignored);
}

void cmFileReplacement::write(cmROStringT bytes)
{
    m_file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

bool cmFileReplacement::finish()
{
    m_file.close();  // writes what is buffered, which may fail
    return m_file && cmReplaceFile(cmPathText(m_temporary), cmPathText(m_path));
}
