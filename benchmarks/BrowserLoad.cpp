#include "benchmarks/BrowserLoad.h"

#include "benchmarks/Measurement.h"

#include <chrono>
#include <thread>

void BrowserLoad::begin(const std::string& top)
{
    constexpr std::int32_t evenIfItIsTheSame = 1;
    const std::string git = programInPath("git");
    if (m_module.call("_GitGetBranchInfo", {top.c_str(), git.c_str(), evenIfItIsTheSame}) != 0)
        throw BenchError("the browser does not load " + m_top);
}

void BrowserLoad::close()
{
    m_module.call("_GitBranchClose", {});
}

double BrowserLoad::wholeLoad()
{
    return elapsedMilliseconds([this] {
        begin();
        while (isLoading())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    });
}

bool BrowserLoad::commit(std::int64_t number, GitCommitInfo& info)
{
    return callback<std::int32_t(std::int64_t, GitCommitInfo&)>(txSlotGitCommit)(number, info) == 0;
}

bool BrowserLoad::graphRow(std::int64_t number, GraphRow& row)
{
    return callback<std::int32_t(std::int64_t, GraphRow&)>(txSlotGitGraphRow)(number, row) == 0;
}
