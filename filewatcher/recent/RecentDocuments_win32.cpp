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
        // For the rest of the thread's life; the editor's thread may have done so itself.
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        SetCurrentProcessExplicitAppUserModelID(application.c_str());
    }

    std::size_t add(const cmArray<cmStringT>& paths) override
    {
        std::size_t taken = 0;
        for (const cmStringT& path : paths) {
            IShellItem* item = nullptr;
            if (FAILED(SHCreateItemFromParsingName(wideText(path).c_str(), nullptr, IID_PPV_ARGS(&item))))
                continue;
            SHARDAPPIDINFO document{item, application.c_str()};
            SHAddToRecentDocs(SHARD_APPIDINFO, &document);
            item->Release();
            ++taken;
        }
        return taken;
    }

private:
    const std::wstring application = wideText(recentDocumentsApplication);
};

}  // namespace

RecentDocuments& systemRecentDocuments()
{
    static ShellRecentDocuments documents;
    return documents;
}
