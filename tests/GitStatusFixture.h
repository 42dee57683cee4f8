#pragma once

#include "tests/ModuleFixture.h"

using Status = std::map<std::string, std::string>;

/// A module and a fresh repository. Files are named relative to its top level, with slashes.
class GitStatusTest : public ModuleTest {
protected:
    GitStatusTest() { makeRepository(top); }

    void commit(const Texts& names) { commitFiles(top, names); }
    void modify(const std::string& name) { writeFile(top / cmSystemPath(name), "two, changed\n"); }
    std::string in(const std::string& name) const { return text(top / cmSystemPath(name)); }

    TempFolder folder;
    const fs::path top = folder / "repo";
};
