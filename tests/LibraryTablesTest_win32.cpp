#include "tests/TestSupport.h"

#include <cxxabi.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using Names = std::set<std::string>;

/// The import and export tables of a library's file. Nothing in the library is resolved or run.
class LibraryTables {
public:
    /// `name` is the name of a library that was built beside the tests.
    explicit LibraryTables(const std::string& name)
        : m_library(LoadLibraryExW(cmSystemPath(builtProgram(name)).replace_extension("dll").c_str(), nullptr,
                                   DONT_RESOLVE_DLL_REFERENCES)),
          m_base(reinterpret_cast<const std::byte*>(m_library))
    {
        if (!m_library)
            throw std::runtime_error("cannot load " + name);
    }
    ~LibraryTables() { FreeLibrary(m_library); }
    LibraryTables(const LibraryTables&) = delete;
    LibraryTables& operator=(const LibraryTables&) = delete;

    /// What is imported by ordinal from each library, as "@" and the ordinal.
    std::map<std::string, Names> imports() const
    {
        std::map<std::string, Names> found;
        const auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
        for (; library->Name != 0; ++library) {
            Names& names = found[at<char>(library->Name)];
            const auto* entry = at<IMAGE_THUNK_DATA64>(library->OriginalFirstThunk);
            for (; entry->u1.AddressOfData != 0; ++entry) {
                if (IMAGE_SNAP_BY_ORDINAL64(entry->u1.Ordinal))
                    names.insert("@" + std::to_string(IMAGE_ORDINAL64(entry->u1.Ordinal)));
            }
        }
        return found;
    }

    /// The names of what is exported, demangled where they are mangled.
    Names exports() const
    {
        const auto& table = *at<IMAGE_EXPORT_DIRECTORY>(directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
        Names found;
        for (DWORD i = 0; i < table.NumberOfNames; ++i) {
            const char* name = at<char>(at<DWORD>(table.AddressOfNames)[i]);
            const std::unique_ptr<char, decltype(&std::free)> text(abi::__cxa_demangle(name, nullptr, nullptr, nullptr),
                                                                   &std::free);
            found.insert(text ? text.get() : name);
        }
        return found;
    }

private:
    template <class Entry>
    const Entry* at(DWORD offset) const
    {
        return reinterpret_cast<const Entry*>(m_base + offset);
    }

    const IMAGE_DATA_DIRECTORY& directory(int which) const
    {
        const auto offset = static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew);
        return at<IMAGE_NT_HEADERS64>(offset)->OptionalHeader.DataDirectory[which];
    }

    HMODULE m_library;
    const std::byte* m_base;
};

Names words(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

TEST(ModuleLibrary, ImportsNumberedServicesByTheirOrdinals)
{
    const std::map<std::string, Names> expected{
        {"txapi.dll", words("@15 @16 @18 @19 @32 @34 @78 @79 @195 @266 @306 @311 @567 @575 @600 @737 @798 @883 @884 @913 @989 "
                            "@1001 @1005 @1056 @1204 @1205")},
        {"KERNEL32.dll", {}},
        {"SHELL32.dll", {}},
        {"msvcrt.dll", {}},
        {"ole32.dll", {}}};  // the system's libraries, no compiler's
    EXPECT_EQ(LibraryTables("filewatcher").imports(), expected);
}

TEST(ModuleLibrary, ExportsItsEntryPointsAndTheEditorsClasses)
{
    std::map<std::string, Names> found;  // operations without their parameters, by class
    for (const std::string& entry : LibraryTables("filewatcher").exports()) {
        const std::size_t scope = entry.starts_with("tamarin::") ? entry.find("::", 9) : std::string::npos;
        const std::string name = scope == std::string::npos ? entry : entry.substr(scope + 2);
        found[scope == std::string::npos ? "" : entry.substr(0, scope)].insert(name.substr(0, name.find('(')));
    }
    EXPECT_EQ(found[""], words("txDllInit txDllExit filewatcherAddPath filewatcherRemovePath filewatcherRemoveType "
                               "filewatcherInitType filewatcherStop"));
    Names string = words("TMString ~TMString operator= operator+ operator+= operator[] charAt first_char last_char getCMString "
                         "getCString getUCString length length32 isEmpty isNotEmpty isNull isNotNull");
    string.insert("operator cmStringT const&");
    EXPECT_EQ(found["tamarin::TMString"], string);
    EXPECT_EQ(found["tamarin::TMIterator"],
              words("TMIterator ~TMIterator operator= reset pushStack popStack clearStack copyStack top"));
    EXPECT_EQ(found.size(), 3u);
}

}  // namespace
