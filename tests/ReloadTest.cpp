#include "filewatcher/reload/FileDateData.h"
#include "tests/ModuleFixture.h"

#include <atomic>

namespace {

using TimeAndFlag = std::pair<std::int64_t, std::int64_t>;

std::atomic<std::uint32_t> now{0};
std::atomic<int> reads{0};
std::atomic<int> blocked{0};
std::atomic<std::uint32_t> hangsUntil{0};  ///< when the last blocked read will be overdue
std::atomic<bool> editorWaits{false};
cmThreadEvent gate{true, false};

/// Behaves as the file name says: "blocked" waits for the gate or the stop of its thread, "awaited" until the editor's thread
/// waits, "takesN" does so and takes N milliseconds of the test's clock, and "throws" has no memory.
CMFD_ITEM readAsNamed(cmROStringT path)
{
    ++reads;
    if (path.ends_with("throws"))
        throw std::bad_alloc();
    if (path.ends_with("blocked") && gate.wait(0) == cmWaitTimeout) {
        ++blocked;
        hangsUntil = now + 30000;
        while (gate.wait(1) == cmWaitTimeout && !cmThread::current()->isJoining()) {
        }
        hangsUntil = now.load();
        --blocked;
    }
    const std::size_t takes = path.rfind("takes");
    if (path.ends_with("awaited") || takes != cmROStringT::npos)
        eventually([] { return editorWaits.load(); });
    if (takes != cmROStringT::npos)
        now += static_cast<std::uint32_t>(std::stoul(std::string(path.substr(takes + 5))));
    return cmReadFileItem(path);
}

/// Times out, and only then moves the clock on, while a read is blocked that is not overdue.
std::uint32_t waitByTestClock(cmThreadEvent& event, std::uint32_t timeoutMs)
{
    std::uint32_t result = cmWaitTimeout;
    const std::uint32_t end = now + timeoutMs;
    editorWaits = true;
    for (int i = 0; i < 5000 && result == cmWaitTimeout && static_cast<std::int32_t>(hangsUntil - now) <= 0; ++i)
        result = event.wait(1);
    editorWaits = false;
    if (result == cmWaitTimeout)
        now = end;
    return result;
}

constexpr FileDateSource testSource{&readAsNamed, [] { return now.load(); }, &waitByTestClock};

class ReloadTest : public ModuleTest {
protected:
    ReloadTest()
    {
        gate.reset();
        now = hangsUntil = 0xFFFFFFF0;
        reads = 0;
    }
    ~ReloadTest() override
    {
        gate.set();
        call("filewatcher_stop_async_work", {});
        setFileDateSource(nullptr);
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
    for (const std::string& name : {in("\xC3\xBC"), text(folder.path()), std::string(".")})
        EXPECT_EQ(table.at(name), (TimeAndFlag{cmReadFileItem(name).modified, 0})) << name;
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
    setFileDateSource(&testSource);
    now = 0;
    EXPECT_EQ(ask({in("takes29999"), in("takes30000"), in("takes30001")}).size(), 1u);
    EXPECT_EQ(slowCount(), 2u);
    now = 0xFFFFFFF0;
    EXPECT_EQ(ask({in("takes40000")}).size(), 1u) << "the clock wrapped around";
    EXPECT_TRUE(ask({in("takes30000")}).empty());
    EXPECT_EQ(reads, 4) << "a slow file is not read again";
    for (const std::int32_t budgetMs : {0, -5}) {
        call("filewatcher_stop_async_work", {});
        gate.reset();
        EXPECT_EQ(slowCount(), 0u);
        EXPECT_TRUE(ask({in("blocked"), in("missing")}, budgetMs).empty());
        EXPECT_TRUE(eventually([] { return blocked == 1; }));
        EXPECT_EQ(slowCount(), 0u);
        ++now;
        EXPECT_TRUE(eventually([this] { return slowCount() == 2; })) << "after a millisecond, while the read still hangs";
        gate.set();
    }
}

TEST_F(ReloadTest, DeliversLateDatesWithALaterCall)
{
    EXPECT_TRUE(ask({"", ""}).empty());
    setFileDateSource(&testSource);
    EXPECT_TRUE(ask({in("blocked"), in("late")}, 0).empty());
    EXPECT_TRUE(ask({}).empty()) << "half of 60 s makes a file slow from now on";
    gate.set();
    ASSERT_TRUE(eventually([] { return !FileDateData::instance()->hasWork(); }));
    EXPECT_TRUE(ask({}).empty());
    const auto late = ask({""});
    EXPECT_TRUE(late.contains(in("late")) && late.contains(in("blocked")));
    EXPECT_TRUE(ask({""}).empty());
    reads = 0;
    EXPECT_TRUE(ask({in("awaited"), in("late")}, 0).empty());
    EXPECT_TRUE(eventually([] { return reads == 1; }));
    EXPECT_EQ(ask({in("late"), in("awaited")}).size(), 2u) << "a call that queues nothing waits for what waits";
    EXPECT_EQ(reads, 2);
}

TEST_F(ReloadTest, GoesOnWithTheOthersWhileUpToFourReadsHang)
{
    setFileDateSource(&testSource);
    const std::size_t threads = threadCount();
    const std::size_t stack = cmDefaultStackSize();
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(ask({in("a"), in("1blocked"), in("1blocked"), in("b")}).size(), 2u);
        EXPECT_EQ(now, 0xFFFFFFF0 + 30000) << "half the budget, once";
    }
    EXPECT_TRUE(ask({in("awaited")}, 0).empty());
    EXPECT_TRUE(ask({in("1blocked")}).empty()) << "for slow files alone nothing is waited for";
    EXPECT_EQ(ask({in("awaited")}).size(), 1u);
    EXPECT_EQ(ask({in("takes24000"), in("2blocked"), in("3blocked"), in("c")}).size(), 1u);
    EXPECT_EQ(now, 0xFFFFFFF0 + 90000) << "never more than the budget, although 3blocked hangs for 6 s only";
    EXPECT_EQ(ask({in("c")}).size(), 1u);
    EXPECT_EQ(now, 0xFFFFFFF0 + 114000) << "half a budget after its read began";
    for (int round = 0; round < 100; ++round)
        EXPECT_TRUE(ask({in("4blocked"), in("5blocked"), in("d")}).empty());
    EXPECT_EQ(now, 0xFFFFFFF0 + 144000) << "when four hang, nothing is waited for";
    EXPECT_EQ(slowCount(), 4u);
    EXPECT_EQ(threadCount(), threads + FileDateData::maxHangingReads);
    gate.set();
    EXPECT_TRUE(eventually([&] { return threadCount() == threads; })) << "given up, a thread ends with its read";
    EXPECT_EQ(ask({in("e")}).size(), 3u);
    gate.reset();
    cmSetDefaultStackSize(std::size_t{1} << 60);
    EXPECT_TRUE(ask({in("6blocked"), in("f")}).empty());
    EXPECT_EQ(now, 0xFFFFFFF0 + 174000) << "without a further thread nothing is waited for";
    EXPECT_TRUE(ask({in("f")}, 60000, 1).empty()) << "nor asked";
    EXPECT_TRUE(ask({""}).empty()) << "an empty name needs no thread";
    cmSetDefaultStackSize(stack);
    call("filewatcher_stop_async_work", {});
    EXPECT_EQ(threadCount(), threads);
}

TEST_F(ReloadTest, WaitsForEveryRequestAndThenSleeps)
{
    setFileDateSource(&testSource);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(ask({in("throws"), in("awaited")}).size(), 1u);
        EXPECT_EQ(slowCount(), 0u);
        EXPECT_FALSE(FileDateData::instance()->hasWork()) << "the thread would run without a request";
    }
    for (int round = 0; round < 10000; ++round)
        ASSERT_EQ(ask({in("a")}).size(), 1u) << "a request was lost in round " << round;
}

}  // namespace
