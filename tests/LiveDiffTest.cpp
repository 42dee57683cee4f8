#include "common/CommandQuoting.h"
#include "filewatcher/livediff/GetFileFromVCThreaded.h"
#include "filewatcher/livediff/LiveDiffCachePath.h"
#include "tests/Captured.h"
#include "tests/ModuleFixture.h"

#include <utility>

namespace {

TEST(LiveDiffCachePath, MapsAbsolutePathsOfBothSystems)
{
    using Cases = std::vector<std::pair<const char*, const char*>>;
    const Cases windows{{R"(C:\a b\f.txt)", R"(C\a b\f.txt)"},
                        {"d:/a/./x/../f", R"(d\a\f)"},
                        {R"(C:\..\..\..\f)", R"(C\f)"},
                        {"//server/share/d/f", R"(server\share\d\f)"},
                        {R"(\\server\..\..\f)", "f"},
                        {R"(\\?\C:\a\f)", R"(C\a\f)"},
                        {R"(\\?\UNC\server\share\f)", R"(server\share\f)"},
                        {R"(\\.\PhysicalDrive0)", "PhysicalDrive0"},
                        {R"(C:\console\com0x\nul-.txt)", R"(C\console\com0x\nul-.txt)"}};
    for (const auto& [file, mirror] : windows)
        EXPECT_EQ(liveDiffMirrorPath(file, cmPathStyle::windows), mirror) << file;
    for (const char* file : {R"(C:\a\CON)",   R"(C:\a\nul.txt)", R"(C:\Aux .c\f)", R"(C:\lpt1.tar.gz)", "C:\\com\xC2\xB9",
                             R"(C:\conout$)", R"(C:\a:b)",       R"(C:\f::$DATA)", R"(C:\D:\f)",        R"(C:\a\.. \f)",
                             R"(C:\a\...\f)", R"(C:\a.\f)",      R"(C:\a\f )",     R"(C:\a*\f)",        "C:\\a\n\\f",
                             R"(C:f)",        R"(\f)",           R"(a\f)",         R"(C:\a\)",          R"(C:\..)"})
        EXPECT_TRUE(liveDiffMirrorPath(file, cmPathStyle::windows).isNull()) << file;

    const Cases posix{{"/home/a b/f", "home/a b/f"},
                      {"//a///./b/../f", "a/f"},
                      {"/../../f", "f"},
                      {"/a/CON/C:\\x:y", "a/CON/C:\\x:y"},
                      {"/a/.../f.", "a/.../f."}};
    for (const auto& [file, mirror] : posix)
        EXPECT_EQ(liveDiffMirrorPath(file, cmPathStyle::posix), mirror) << file;
    for (const char* file : {"a/f", "/", ""})
        EXPECT_TRUE(liveDiffMirrorPath(file, cmPathStyle::posix).isNull()) << file;
}

class LiveDiffTest : public ModuleTest {
protected:
    LiveDiffTest()
    {
        fs::create_directories(folder / "work");
        editor.setDirectory(cmROStringT(text(folder / "editor")));
    }

    std::int32_t fetch(const char* function, cmROStringT command, const std::string& file)
    {
        const TXHVAR cache = txHvarAlloc();
        const std::string directory = text(folder / "work");
        const std::int32_t status =
            call(function, {"origin", cmStringT(command), file.c_str(), CallArgument::variable(cache), directory.c_str()});
        const auto* path = std::get_if<cmStringT>(editor.value(cache));
        cacheFile = path ? path->c_str() : "";
        return status;
    }
    std::int32_t have() { return call("_SVCLiveDiffHaveVCFile", {cacheFile.c_str()}); }
    std::string cached() const { return readFile(cmSystemPath(cacheFile)); }
    std::string in(const std::string& name) const { return text(folder / "work" / cmSystemPath(name)); }
    /// The size of all files below the editor's directory.
    std::uintmax_t bytesInCache() const
    {
        std::uintmax_t bytes = 0;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder / "editor"))
            bytes += entry.is_directory() ? 0 : entry.file_size();
        return bytes;
    }

    static constexpr const char* now = "_SVCLiveDiffGetVCFileImmediate";
    static constexpr const char* later = "_SVCLiveDiffGetVCFile";
    TempFolder folder;
    std::string cacheFile;
};

TEST_F(LiveDiffTest, FetchesTheCommittedBytes)
{
    std::string binary;
    for (unsigned i = 0; i < 300000; ++i)
        binary += static_cast<char>(i * i % 257);
    const std::string file = in("\xC3\xBC%&.bin");
    makeRepository(folder / "work");
    git(folder / "work", {"config", "core.autocrlf", "false"});
    for (const std::string& content : {std::string("a\r\nb\r\n\x1A"), std::string(), binary}) {
        writeFile(cmSystemPath(file), content);
        git(folder / "work", {"add", "."});
        git(folder / "work", {"commit", "--quiet", "--message", "next"});
        const std::string show = std::string("\"git\" --no-pager show ") + quoteArgument("HEAD:\xC3\xBC%&.bin").c_str();
        EXPECT_EQ(fetch(now, show, file), 0);
        EXPECT_TRUE(cached() == content);
        writeFile(cmSystemPath(cacheFile), "older");
        EXPECT_EQ(fetch(later, show, file), 0);
        EXPECT_TRUE(eventually([] { return !GetFileFromVCThreaded::instance(false)->isRunning(); }));
        EXPECT_TRUE(cached() == content);
        EXPECT_EQ(have(), 1);
    }
    cacheFile = in("unknown");
    EXPECT_EQ(have(), 0);
    EXPECT_EQ(bytesInCache(), binary.size());
}

TEST_F(LiveDiffTest, KeepsTheOldCacheFileWhenTheToolFails)
{
    const auto complaint = [](std::size_t dots) {
        return helper("say content \"" + std::string(dots, '.') + "fatal: it is wrong\"");
    };
    ASSERT_EQ(fetch(now, helper("bytes 10"), in("f")), 0);
    EXPECT_EQ(fetch(now, complaint(8089), in("f")), -104370);
    EXPECT_EQ(have(), -104370);
    EXPECT_EQ(cached().size(), 10u);
    ASSERT_EQ(fetch(later, complaint(100), in("f")), 0);
    EXPECT_TRUE(eventually([this] { return have() == -104357; }));
    EXPECT_EQ(fetch(now, text(folder / "no such tool"), in("f")), -104370);
    EXPECT_EQ(fetch(now, helper("say \"\" \"svn: E155010: not found\""), in("f")), -104370);
    EXPECT_EQ(cached().size(), 10u);
    EXPECT_EQ(fetch(now, helper("say content \"svn: E155010: beside content\""), in("f")), 0);
    EXPECT_EQ(fetch(now, helper("say \"\" \"svn: warning: W1, and an empty file\""), in("f")), 0);
    EXPECT_EQ(cached(), "");
    EXPECT_EQ(fetch(now, complaint(8090), in("f")), 0) << "only the first 8,095 bytes of standard error count";
    EXPECT_EQ(have(), 1);
    editor.setProperty(txPropertyLiveDiffReset, 0);
    EXPECT_EQ(have(), 1);
    editor.setProperty(txPropertyLiveDiffReset, 1);
    EXPECT_EQ(have(), 0);
    editor.setProperty(txPropertyLiveDiffReset, 0);
    EXPECT_EQ(have(), 0) << "forgotten";
}

TEST_F(LiveDiffTest, FetchesOneFileAtATime)
{
    ASSERT_EQ(fetch(later, helper("bytes-then-hang 100000"), in("f")), 0);
    const std::string first = cacheFile;
    EXPECT_EQ(fetch(later, helper("bytes 10"), in("g")), -104360);
    EXPECT_EQ(cacheFile, "");
    EXPECT_EQ(fetch(now, helper("bytes 10"), in("g")), -104360);
    cacheFile = first;
    EXPECT_EQ(have(), 0);
    ASSERT_TRUE(eventually([this] { return bytesInCache() > 80000; }));
    call("filewatcher_stop_async_work", {});
    EXPECT_EQ(have(), 1);
    EXPECT_GT(cached().size(), 80000u);
    EXPECT_EQ(fetch(later, helper("bytes 10"), in("f")), 0);
    EXPECT_TRUE(eventually([] { return !GetFileFromVCThreaded::instance(false)->isRunning(); }));
    EXPECT_EQ(cached().size(), 10u);
}

TEST_F(LiveDiffTest, ReportsAPlaceThatCannotBeWritten)
{
    ASSERT_EQ(fetch(now, helper("bytes 10"), in("f")), 0);
    EXPECT_EQ(fetch(now, helper("bytes 10"), in("f/below")), -104370) << "a file where a folder should be";
    EXPECT_EQ(cacheFile, "");
    EXPECT_EQ(fetch(later, helper("bytes 10"), in("f/below")), -104357);
    ASSERT_EQ(fetch(now, helper("bytes 10"), in("d/f")), 0);
    EXPECT_EQ(fetch(now, helper("bytes 10"), in("d")), -104370) << "a folder where the file should be";
    EXPECT_EQ(have(), -104370);
    EXPECT_EQ(bytesInCache(), 20u);
    EXPECT_EQ(fetch(now, helper("bytes 10"), "http://host/f"), -104370);
    EXPECT_EQ(fetch(now, helper("bytes 10"), "relative"), 0);
    EXPECT_TRUE(cacheFile.ends_with(text(fs::current_path().filename() / "relative")));
}

}  // namespace
