#include "filewatcher/reload/FileDateThread.h"
#include "tests/ModuleFixture.h"

#include <atomic>

namespace {

using TimeAndFlag = std::pair<std::int64_t, std::int64_t>;

std::atomic<std::uint32_t> now{0};
std::atomic<int> reads{0};
cmThreadEvent gate{true, false};

/// Behaves as the file name says: "blocked" waits for the gate, "awaited" until the editor's thread waits, and "takesN" takes N
/// milliseconds of the test's clock.
CMFD_ITEM readAsNamed(cmROStringT path)
{
    ++reads;
    if (path.ends_with("blocked"))
        gate.wait(cmWaitInfinite);
    if (path.ends_with("awaited"))
        eventually([] { return FileDateData::instance()->isEditorWaiting(); });
    if (const std::size_t at = path.rfind("takes"); at != cmROStringT::npos)
        now += static_cast<std::uint32_t>(std::stoul(std::string(path.substr(at + 5))));
    return cmReadFileItem(path);
}

constexpr FileDateSource testSource{&readAsNamed, [] { return now.load(); }};

class ReloadTest : public ModuleTest {
protected:
    ReloadTest()
    {
        gate.reset();
        reads = 0;
    }
    ~ReloadTest() override
    {
        gate.set();
        call("filewatcher_stop_async_work", {});
        FileDateData::setSource(nullptr);
    }

    std::map<std::string, TimeAndFlag> ask(const Texts& names, std::int32_t budgetMs = 60000, std::int32_t status = 0)
    {
        const TXHVAR files = txHvarAlloc();
        const TXHVAR result = txHvarAlloc();
        for (std::size_t i = 0; i < names.size(); ++i)
            txHvarSetString(txHvarArrayElement(files, static_cast<std::int32_t>(i), txCreateMissing), cmROStringT(names[i]));
        EXPECT_EQ(
            call("_GetFastReloadInfoTable", {CallArgument::variable(files), 3, 4, CallArgument::variable(result), budgetMs}),
            status);
        std::map<std::string, TimeAndFlag> table;
        if (const auto* answers = std::get_if<VariableTable>(editor.value(result))) {
            for (const auto& [name, answer] : *answers) {
                const auto& cells = std::get<VariableArray>(answer->value);
                table[name.c_str()] = {std::get<std::int64_t>(cells[0]->value), std::get<std::int64_t>(cells[1]->value)};
            }
        }
        return table;
    }
    std::size_t slowCount()
    {
        const TXHVAR result = txHvarAlloc();
        EXPECT_EQ(call("_GetSlowReloadFiles", {CallArgument::variable(result)}), 0);
        const auto* names = std::get_if<VariableTable>(editor.value(result));
        return names ? names->size() : 0;
    }
    std::string in(const std::string& name) const { return text(folder / name); }

    TempFolder folder;
};

TEST_F(ReloadTest, ReportsTimeAndReadOnlyFlagOfEveryFile)
{
    const Texts names{"", in("missing"), in("\xC3\xBC"), in("readonly"), text(folder.path()), ".", "http://host/f"};
    for (const char* name : {"\xC3\xBC", "readonly"})
        writeFile(folder / name, "x");
    fs::permissions(folder / "readonly", fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    const auto table = ask(names);
    EXPECT_EQ(table.size(), names.size() - 2) << "neither an empty name nor a file system without times has an answer";
    EXPECT_EQ(table.at(in("missing")), (TimeAndFlag{0, 0}));
    EXPECT_EQ(table.at(in("readonly")).second, 1);
    for (const std::string& name : {in("\xC3\xBC"), text(folder.path()), std::string(".")}) {
        EXPECT_EQ(table.at(name), (TimeAndFlag{cmReadFileItem(name).modified, 0})) << name;
        EXPECT_GT(table.at(name).first, 130'000'000'000'000'000);
    }
    EXPECT_EQ(slowCount(), 0u);
    const std::string moved = in("\xC3\xBC");
    const auto whole = std::chrono::floor<std::chrono::seconds>(fs::last_write_time(cmSystemPath(moved)));
    fs::last_write_time(cmSystemPath(moved), whole);
    const std::int64_t before = ask({moved}).at(moved).first;
    fs::last_write_time(cmSystemPath(moved), whole + std::chrono::seconds(3));
    EXPECT_EQ(ask({moved}).at(moved).first - before, 30'000'000);
}

TEST_F(ReloadTest, CountsAFileAsSlowFromHalfTheBudgetOn)
{
    FileDateData::setSource(&testSource);
    EXPECT_EQ(ask({in("takes29999"), in("takes30000"), in("takes30001")}).size(), 1u);
    EXPECT_EQ(slowCount(), 2u);
    now = 0xFFFFFFF0;
    EXPECT_EQ(ask({in("takes40000")}).size(), 1u) << "the clock wrapped around";
    EXPECT_EQ(reads, 4);
    EXPECT_TRUE(ask({in("takes30000")}).empty());
    EXPECT_EQ(reads, 4) << "a slow file is not read again";
    for (const std::int32_t budgetMs : {0, -5}) {
        call("filewatcher_stop_async_work", {});
        gate.reset();
        EXPECT_EQ(slowCount(), 0u);
        EXPECT_TRUE(ask({in("blocked"), in("takes0")}, budgetMs).empty());
        gate.set();
        EXPECT_TRUE(eventually([this] { return slowCount() == 2; }));
    }
}

TEST_F(ReloadTest, DeliversLateDatesWithALaterCall)
{
    EXPECT_TRUE(ask({}).empty());
    EXPECT_TRUE(ask({"", ""}).empty());
    const std::size_t stack = cmDefaultStackSize();
    cmSetDefaultStackSize(std::size_t{1} << 60);
    EXPECT_TRUE(ask({in("blocked")}, 60000, 1).empty()) << "without a thread nothing is asked, and nothing waited for";
    cmSetDefaultStackSize(stack);
    FileDateData::setSource(&testSource);
    EXPECT_TRUE(ask({in("blocked"), in("late")}, 100).empty());
    gate.set();
    ASSERT_TRUE(eventually([] { return !FileDateData::instance()->hasWork(); }));
    EXPECT_TRUE(ask({}).empty());
    const auto late = ask({""});
    EXPECT_TRUE(late.contains(in("late")) && late.contains(in("blocked")));
    EXPECT_TRUE(ask({""}).empty());
}

TEST_F(ReloadTest, WaitsForEveryRequestAndThenSleeps)
{
    FileDateData::setSource(&testSource);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(ask({in("awaited")}).size(), 1u);
        EXPECT_FALSE(FileDateData::instance()->hasWork()) << "the thread would run without a request";
    }
    for (int round = 0; round < 10000; ++round)
        ASSERT_EQ(ask({in("a")}).size(), 1u) << "a request was lost in round " << round;
}

}  // namespace
