#include "filewatcher/recent/RecentDocuments.h"

#include "common/Environment.h"
#include "common/cmPath.h"
#include "common/cmSystemPath.h"

#include <glib.h>
#include <glib/gstdio.h>

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

struct Free {
    void operator()(char* text) const { g_free(text); }
    void operator()(GBookmarkFile* list) const { g_bookmark_file_free(list); }
};
using Text = std::unique_ptr<char, Free>;
using List = std::unique_ptr<GBookmarkFile, Free>;

/// The path of the list by the desktop's rules. GLib's own function would keep its first answer, even when the host changes its
/// environment later.
cmStringT listPath()
{
    const cmStringT chosen = environmentValue(hostEnvironment(), "XDG_DATA_HOME");
    const cmStringT data = cmIsAbsolutePath(chosen) ? chosen : cmJoinPath(g_get_home_dir(), ".local/share");
    return cmJoinPath(data, "recently-used.xbel");
}

/// The file that `path` leads to. It need not exist. Null when links lead in a circle.
cmStringT behindLinks(const cmStringT& path)
{
    fs::path file = cmSystemPath(path);
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int links = 0; links < mostLinks; ++links) {
        if (!fs::is_symlink(file, error))
            return cmPathText(file);
        file = file.parent_path() / fs::read_symlink(file, error);
    }
    return {};
}

/// Reads the list; an empty one when the file does not exist or holds nothing. Null when the file cannot be read, or is no file
/// but a pipe or a device: it must not be replaced then, since it also belongs to other programs.
List readList(const cmStringT& path)
{
    List list(g_bookmark_file_new());
    std::error_code error;
    const fs::file_status status = fs::status(cmSystemPath(path), error);
    if (status.type() == fs::file_type::not_found)
        return list;
    if (status.type() != fs::file_type::regular)
        return nullptr;
    const bool isRead =
        fs::file_size(cmSystemPath(path), error) == 0 || g_bookmark_file_load_from_file(list.get(), path.c_str(), nullptr);
    return isRead ? std::move(list) : nullptr;
}

/// False when the file does not exist or its name cannot be a URI.
bool addFile(GBookmarkFile* list, const cmStringT& path)
{
    if (!g_file_test(path.c_str(), G_FILE_TEST_EXISTS))
        return false;
    const Text uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    if (!uri)
        return false;
    if (!g_bookmark_file_has_item(list, uri.get()))
        g_bookmark_file_set_mime_type(list, uri.get(), "text/plain");  // desktops ignore entries without a type
    g_bookmark_file_add_application(list, uri.get(), recentDocumentsApplication, "tamarin %f");
    return true;
}

/// The desktop's file of recently used documents, shared by all programs.
class DesktopRecentDocuments : public RecentDocuments {
public:
    void setUp() override {}

    std::size_t add(const cmArray<cmStringT>& paths) override
    {
        const cmStringT path = behindLinks(listPath());  // a link stays: the file that it leads to is replaced
        const List list = readList(path);
        if (!list)
            return 0;
        std::size_t added = 0;
        for (const cmStringT& document : paths)
            added += addFile(list.get(), document) ? 1 : 0;
        const Text folder(g_path_get_dirname(path.c_str()));
        constexpr int ownerOnly = 0700;
        if (added == 0 || g_mkdir_with_parents(folder.get(), ownerOnly) != 0
            || !g_bookmark_file_to_file(list.get(), path.c_str(), nullptr))
            return 0;
        g_chmod(path.c_str(), 0600);  // other users must not see which files were used
        return added;
    }
};

}  // namespace

RecentDocuments& systemRecentDocuments()
{
    static DesktopRecentDocuments documents;
    return documents;
}
