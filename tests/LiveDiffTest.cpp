#include "common/CommandLine.h"
#include "filewatcher/livediff/LiveDiffCachePath.h"
#include "tests/ModuleFixture.h"

#include <array>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

TEST(LiveDiffCachePath, MirrorsAbsolutePathsOfBothSystems)
{
    struct Case {
        cmPathStyle style;
        const char* file;
        const char* mirror;  ///< null: refused
    };
    constexpr cmPathStyle windows = cmPathStyle::windows;
    constexpr cmPathStyle posix = cmPathStyle::posix;
    const std::array<Case, 38> cases{{
        {windows, R"(C:\a b\f.txt)", R"(C\a b\f.txt)"},
        {windows, "d:/a/./x/../f", R"(d\a\f)"},
        {windows, R"(C:\..\..\..\f)", R"(C\f)"},
        {windows, R"(\\server\share\f)", R"(server\share\f)"},
        {windows, "//server/share/d/f", R"(server\share\d\f)"},
        {windows, R"(\\server\..\..\f)", "f"},
        {windows, R"(\\?\C:\a\f)", R"(C\a\f)"},
        {windows, R"(\\?\UNC\server\share\f)", R"(server\share\f)"},
        {windows, R"(\\.\PhysicalDrive0)", "PhysicalDrive0"},
        {windows, R"(C:\console\com0x\nul-.txt)", R"(C\console\com0x\nul-.txt)"},
        {windows, R"(C:\a\CON)", nullptr},
        {windows, R"(C:\a\nul.txt)", nullptr},
        {windows, R"(C:\Aux .c\f)", nullptr},
        {windows, R"(C:\lpt1.tar.gz)", nullptr},
        {windows, "C:\\com\xC2\xB9", nullptr},
        {windows, R"(C:\conout$)", nullptr},
        {windows, R"(C:\a:b)", nullptr},
        {windows, R"(C:\f::$DATA)", nullptr},
        {windows, R"(C:\D:\f)", nullptr},
        {windows, R"(C:\a\.. \f)", nullptr},
        {windows, R"(C:\a\...\f)", nullptr},
        {windows, R"(C:\a.\f)", nullptr},
        {windows, R"(C:\a\f )", nullptr},
        {windows, R"(C:\a*\f)", nullptr},
        {windows, "C:\\a\n\\f", nullptr},
        {windows, R"(C:f)", nullptr},
        {windows, R"(\f)", nullptr},
        {windows, R"(a\f)", nullptr},
        {windows, R"(C:\a\)", nullptr},
        {windows, R"(C:\..)", nullptr},
        {posix, "/home/a b/f", "home/a b/f"},
        {posix, "//a///./b/../f", "a/f"},
        {posix, "/../../f", "f"},
        {posix, "/a/CON/C:\\x:y", "a/CON/C:\\x:y"},
        {posix, "/a/.../f.", "a/.../f."},
        {posix, "a/f", nullptr},
        {posix, "/", nullptr},
        {posix, "", nullptr},
    }};
    for (const Case& one : cases) {
        const cmStringT mirror = liveDiffMirrorPath(one.file, one.style);
        EXPECT_EQ(mirror.isNull(), one.mirror == nullptr) << one.file;
        EXPECT_EQ(mirror, one.mirror ? one.mirror : "") << one.file;
    }
}

class LiveDiffTest : public ModuleTest {
protected:
    LiveDiffTest()
    {
        fs::create_directories(folder / "work");
        editor.setDirectory(cmROStringT(text(folder / "editor")));
    }

    std::int32_t fetch(const char* function, const std::string& command, const fs::path& file)
    {
        const TXHVAR cache = txHvarAlloc();
        const std::int32_t result =
            call(function, {"origin", command.c_str(), cmStringT(cmROStringT(text(file))), CallArgument::variable(cache),
                            cmStringT(cmROStringT(text(folder / "work")))});
        cmStringT path;
        txHvarGetString(cache, path);
        cacheFile = path.c_str();
        txHvarFree(cache);
        return result;
    }
    std::int32_t fetchNow(const std::string& command, const fs::path& file)
    {
        return fetch("_SVCLiveDiffGetVCFileImmediate", command, file);
    }
    std::int32_t fetchLater(const std::string& command, const fs::path& file)
    {
        return fetch("_SVCLiveDiffGetVCFile", command, file);
    }
    std::int32_t have() { return call("_SVCLiveDiffHaveVCFile", {cacheFile.c_str()}); }
    std::string cached() const { return readFile(cmSystemPath(cacheFile)); }
    static std::string helper(const std::string& arguments) { return '"' + builtProgram("testhelper") + "\" " + arguments; }
    static std::string show(const std::string& name)
    {
        return std::string("\"git\" --no-pager show ") + quoteArgument("HEAD:" + name).c_str();
    }
    /// The sizes of the files below the editor's directory.
    std::vector<std::uintmax_t> sizesInCache() const
    {
        std::vector<std::uintmax_t> sizes;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder / "editor")) {
            if (!entry.is_directory())
                sizes.push_back(entry.file_size());
        }
        return sizes;
    }

    TempFolder folder;
    std::string cacheFile;
};

TEST_F(LiveDiffTest, FetchesTheCommittedBytes)
{
    makeRepository(folder / "work");
    git(folder / "work", {"config", "core.autocrlf", "false"});
    std::string binary(300000, '\0');
    for (std::size_t i = 0; i < binary.size(); ++i)
        binary[i] = static_cast<char>(i * i % 257);
    const std::array<std::pair<std::string, std::string>, 4> contents{
        {{"plain.txt", "a\nb"}, {"cr lf.txt", "a\r\nb\r\n\x1A"}, {"empty", ""}, {"\xC3\xBC%&.bin", binary}}};
    for (const auto& [name, content] : contents)
        writeFile(folder / "work" / cmSystemPath(name), content);
    git(folder / "work", {"add", "."});
    git(folder / "work", {"commit", "--quiet", "--message", "all"});
    for (const auto& [name, content] : contents) {
        const fs::path file = folder / "work" / cmSystemPath(name);
        writeFile(file, "edited since");
        cacheFile = text(file);
        EXPECT_EQ(have(), 0);
        EXPECT_EQ(fetchLater(show(name), file), 0);
        EXPECT_TRUE(eventually([this] { return have() == 1; }));
        EXPECT_TRUE(cached() == content) << name;
        call("filewatcher_stop_async_work", {});
        writeFile(cmSystemPath(cacheFile), "older");
        EXPECT_EQ(fetchNow(show(name), file), 0);
        EXPECT_TRUE(cached() == content) << name;
    }
    EXPECT_EQ(sizesInCache().size(), contents.size());
    for (int i = 0; i < affordableStarts(100); ++i)
        ASSERT_EQ(fetchNow(show("plain.txt"), folder / "work" / "plain.txt"), 0);
}

TEST_F(LiveDiffTest, LeavesTheCacheFileAloneWhenTheToolFails)
{
    const fs::path file = folder / "work" / "f";
    ASSERT_EQ(fetchNow(helper("bytes 10"), file), 0);
    EXPECT_EQ(fetchNow(helper("complain 8089"), file), -104370);
    EXPECT_EQ(have(), -104370);
    EXPECT_EQ(cached().size(), 10u);
    ASSERT_EQ(fetchLater(helper("complain 100"), file), 0);
    EXPECT_TRUE(eventually([this] { return have() == -104357; }));
    EXPECT_EQ(fetchNow(text(folder / "no such tool"), file), -104370);
    EXPECT_EQ(cached().size(), 10u);
    EXPECT_EQ(fetchNow(helper("complain 8090"), file), 0) << "it is past what counts";
    EXPECT_EQ(have(), 1);
    editor.setProperty(txPropertyLiveDiffReset, 1);
    EXPECT_EQ(have(), 0);
    editor.removeProperty(2);
    EXPECT_EQ(have(), 0);
}

TEST_F(LiveDiffTest, FetchesOneFileAtATime)
{
    const fs::path file = folder / "work" / "f";
    ASSERT_EQ(fetchLater(helper("bytes-then-hang 100000"), file), 0);
    const std::string first = cacheFile;
    EXPECT_EQ(fetchLater(helper("bytes 10"), folder / "work" / "g"), -104360);
    EXPECT_EQ(cacheFile, "");
    EXPECT_EQ(fetchNow(helper("bytes 10"), folder / "work" / "g"), -104360);
    cacheFile = first;
    EXPECT_EQ(have(), 0);
    ASSERT_TRUE(eventually([this] {
        const auto sizes = sizesInCache();
        return sizes.size() == 1 && sizes[0] > 80000;
    }));
    call("filewatcher_stop_async_work", {});
    EXPECT_EQ(have(), 1);
    EXPECT_GT(cached().size(), 80000u);
    EXPECT_EQ(fetchLater(helper("bytes 10"), file), 0);
}

TEST_F(LiveDiffTest, ReportsAPlaceThatCannotBeWritten)
{
    const fs::path file = folder / "work" / "f";
    ASSERT_EQ(fetchNow(helper("bytes 10"), file), 0);
    EXPECT_EQ(fetchNow(helper("bytes 10"), file / "below"), -104370) << "a file where a folder should be";
    EXPECT_EQ(cacheFile, "");
    EXPECT_EQ(fetchLater(helper("bytes 10"), file / "below"), -104357);
    ASSERT_EQ(fetchNow(helper("bytes 10"), folder / "work" / "d" / "f"), 0);
    EXPECT_EQ(fetchNow(helper("bytes 10"), folder / "work" / "d"), -104370) << "a folder where the file should be";
    EXPECT_EQ(have(), -104370);
    EXPECT_EQ(sizesInCache().size(), 2u);
    EXPECT_EQ(fetchNow(helper("bytes 10"), "http://host/f"), -104370);
    if (cmNativePathStyle == cmPathStyle::windows)
        return;  // no links here
    ASSERT_EQ(fetchNow(helper("bytes 10"), folder / "work" / "link" / "f"), 0);
    const fs::path link = cmSystemPath(cacheFile).parent_path();
    fs::remove_all(link);
    fs::create_directories(folder / "elsewhere");
    fs::create_directory_symlink(folder / "elsewhere", link);
    EXPECT_EQ(fetchNow(helper("bytes 10"), folder / "work" / "link" / "f"), -104370);
    EXPECT_EQ(fetchNow(helper("bytes 10"), folder / "work" / "link" / "deep" / "f"), -104370);
    EXPECT_TRUE(fs::is_empty(folder / "elsewhere"));
}

}  // namespace
