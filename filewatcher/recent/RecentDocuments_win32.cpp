#include "filewatcher/recent/RecentDocuments.h"

#include "common/WideText.h"

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <string>

namespace {

class ShellRecentDocuments : public RecentDocuments {
public:
    void setUp() override
    {
        // Lasts until the thread ends. Fails harmlessly when the editor has initialised its thread already.
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        SetCurrentProcessExplicitAppUserModelID(m_application.c_str());
    }

    std::size_t add(const cmArray<cmStringT>& paths) override
    {
        std::size_t added = 0;
        for (const cmStringT& path : paths) {
            IShellItem* item = nullptr;
            if (FAILED(SHCreateItemFromParsingName(wideText(path).c_str(), nullptr, IID_PPV_ARGS(&item))))
                continue;
            SHARDAPPIDINFO document{item, m_application.c_str()};
            SHAddToRecentDocs(SHARD_APPIDINFO, &document);
            item->Release();
            ++added;
        }
        return added;
    }

private:
    const std::wstring m_application = wideText(recentDocumentsApplication);
};

}  // namespace

RecentDocuments& systemRecentDocuments()
{
    static ShellRecentDocuments documents;
    return documents;
}
