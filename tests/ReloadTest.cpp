#include "common/cmDateTime.h"
#include "filewatcher/reload/FileDateThread.h"
#include "tests/ModuleFixture.h"

#include <atomic>
#include <filesystem>
#include <thread>

namespace fs = std::filesystem;

namespace {

/// A file system that is as slow as a test wants it to be.
std::atomic<int> slowNow{0};
cmThreadEvent gate{true, false};

CMFD_ITEM readSlowly(cmROStringT path)
{
    if (path.ends_with("blocked")) {
        ++slowNow;
        gate.wait(cmWaitInfinite);
        --slowNow;
    }
    return cmReadFileItem(path);
}

using Table = std::map<std::string, std::pair<std::int64_t, std::int64_t>>;

class ReloadTest : public ModuleTest {
protected:
    ReloadTest() { gate.reset(); }
    ~ReloadTest() override
    {
        gate.set();
        call("filewatcher_stop_async_work", {});
        FileDateData::setReader(nullptr);
        EXPECT_EQ(slowNow, 0);
    }

    /// Asks for the dates of these files: name to time and read-only flag.
    Table ask(const std::vector<std::string>& names, std::int32_t budgetMs = 10000)
    {
        const TXHVAR files = txHvarAlloc();
        const TXHVAR result = txHvarAlloc();
        for (std::size_t i = 0; i < names.size(); ++i)
            txHvarSetString(txHvarArrayElement(files, static_cast<std::int32_t>(i), txCreateMissing), cmROStringT(names[i]));
        const std::uint32_t start = cmTickCount();
        EXPECT_EQ(
            call("_GetFastReloadInfoTable", {CallArgument::variable(files), 3, 4, CallArgument::variable(result), budgetMs}), 0);
        tookMs = cmTickCount() - start;
        Table table;
        tamarin::TMIterator iterator;
        iterator.pushStack(result);
        while (const TXHVAR element = txHvarNextElement(iterator)) {
            cmStringT time;
            txHvarGetString(txHvarArrayElement(element, 0, 0), time);
            table[iterator.top()->lastKey.c_str()] = {std::stoll(time.c_str()), txHvarGetInt(txHvarArrayElement(element, 1, 0))};
        }
        txHvarFree(files);
        txHvarFree(result);
        return table;
    }
    std::vector<std::string> slowFiles()
    {
        const TXHVAR result = txHvarAlloc();
        EXPECT_EQ(call("_GetSlowReloadFiles", {CallArgument::variable(result)}), 0);
        std::vector<std::string> names;
        tamarin::TMIterator iterator;
        iterator.pushStack(result);
        while (const TXHVAR element = txHvarNextElement(iterator)) {
            EXPECT_EQ(txHvarGetInt(element), 1);
            names.emplace_back(iterator.top()->lastKey.c_str());
        }
        txHvarFree(result);
        return names;
    }
    std::string in(const std::string& name) const { return text(folder / name); }

    TempFolder folder;
    std::uint32_t tookMs = 0;
};

TEST_F(ReloadTest, TellsTimeAndReadOnlyFlagOfEveryFile)
{
    std::vector<std::string> names{"", in("missing"), in("\xC3\xBC"), in("readonly"), text(folder.path())};
    for (const char* name : {"\xC3\xBC", "readonly"})
        writeFile(folder / name, "x");
    fs::permissions(folder / "readonly", fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    for (int i = 0; i < affordableStarts(2000); ++i) {
        names.push_back(in("f" + std::to_string(i)));
        writeFile(folder / ("f" + std::to_string(i)), "x");
    }
    const Table table = ask(names);
    EXPECT_EQ(table.size(), names.size() - 1);
    EXPECT_EQ(table.at(in("missing")), (std::pair<std::int64_t, std::int64_t>{0, 0}));
    EXPECT_EQ(table.at(in("readonly")).second, 1);
    for (const std::string& name : {in("\xC3\xBC"), text(folder.path()), in("f0")}) {
        EXPECT_EQ(table.at(name).first, cmReadFileItem(name).modified) << name;
        EXPECT_GT(table.at(name).first, 130'000'000'000'000'000);
        EXPECT_EQ(table.at(name).second, 0) << name;
    }
    EXPECT_EQ(cmReadFileItem(text(folder.path())).attributes & cmAttributeDirectory, cmAttributeDirectory);
    EXPECT_EQ(cmReadFileItem(in("missing")).state, cmItemState::missing);
    EXPECT_TRUE(slowFiles().empty());

    // Two edits within one second are two changes.
    std::int64_t last = table.at(in("f0")).first;
    for (int edit = 0; edit < 2; ++edit) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        writeFile(folder / "f0", "y");
        const std::int64_t now = ask({in("f0")}).at(in("f0")).first;
        EXPECT_GT(now, last + 100'000);
        EXPECT_LT(now, last + 600'000'000);
        last = now;
    }
}

TEST_F(ReloadTest, AsksNothingForEmptyListsButDeliversWhatIsLeft)
{
    EXPECT_TRUE(ask({}).empty());
    EXPECT_TRUE(ask({"", ""}).empty());
    FileDateData::setReader(&readSlowly);
    writeFile(folder / "late", "x");
    EXPECT_TRUE(ask({in("blocked"), in("late")}, 300).empty());
    EXPECT_GE(tookMs, 290u);
    EXPECT_LT(tookMs, 1000u);
    gate.set();
    ASSERT_TRUE(eventually([this] { return slowFiles().size() == 1; }));
    Table late;
    ASSERT_TRUE(eventually([&] { return (late = ask({""})).size() == 1; }));
    EXPECT_TRUE(late.contains(in("late")));
    EXPECT_EQ(slowFiles(), std::vector<std::string>{in("blocked")});
    EXPECT_TRUE(ask({in("blocked")}, 20000).empty());
    EXPECT_LT(tookMs, 5000u);
    EXPECT_EQ(ask({in("blocked"), in("late")}).size(), 1u);
}

TEST_F(ReloadTest, WithoutABudgetEveryFileIsSlow)
{
    writeFile(folder / "a", "x");
    ask({in("a")}, -5);
    EXPECT_TRUE(eventually([this] { return slowFiles().size() == 1; }));
    call("filewatcher_stop_async_work", {});
    EXPECT_TRUE(slowFiles().empty());
    EXPECT_EQ(ask({in("a")}).size(), 1u);
}

TEST_F(ReloadTest, NeverLosesARequestNorReturnsEarly)
{
    writeFile(folder / "a", "x");
    for (int round = 0; round < 10000; ++round)
        ASSERT_EQ(ask({in("a")}, 60000).size(), 1u) << round;
}

}  // namespace
