#pragma once

#include "benchmarks/BenchModule.h"
#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/graph/GraphRow.h"
#include "txapi/txapi.h"

#include <cstdint>
#include <filesystem>
#include <string>

/// Loads a repository into the Git browser, as often as needed, and reads it through the editor's callbacks.
class BrowserLoad {
public:
    explicit BrowserLoad(const std::filesystem::path& top) : m_top(top.string()) {}

    BenchModule& module() { return m_module; }
    void begin() { begin(m_top); }
    void begin(const std::string& top);
    void close();
    bool isLoading() { return m_module.call("_GitGetBranchInfoRunning", {}) != 0; }
    /// The time of one load in milliseconds. The editor's event loop does not run meanwhile, so no tree is filled.
    double wholeLoad();

    /// How many commits are loaded; the working copy counts as one.
    std::int32_t count() { return callback<std::int32_t()>(txSlotGitCount)(); }
    /// Copies a commit. Returns false as long as it cannot be read.
    bool commit(std::int64_t number, GitCommitInfo& info);
    /// Copies the graph beside a commit. Returns false as long as it has no row.
    bool graphRow(std::int64_t number, GraphRow& row);

private:
    template <class Function>
    Function* callback(std::int32_t slot)
    {
        return reinterpret_cast<Function*>(m_module.editor().callback(slot));
    }

    std::string m_top;
    BenchModule m_module{programInPath("git")};
};
