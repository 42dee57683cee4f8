#include "tests/TestSupport.h"

#include <cxxabi.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>

namespace {

using Names = std::set<std::string>;

/// The import and export tables of a library, as its file has them: nothing of it is resolved or run.
class LibraryTables {
public:
    /// `name` is that of a library that was built beside the tests.
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

    /// Per library, what is imported: a name, or "@" and an ordinal.
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
                else
                    names.insert(at<IMAGE_IMPORT_BY_NAME>(static_cast<DWORD>(entry->u1.AddressOfData))->Name);
            }
        }
        return found;
    }

    /// What is exported: names as the source has them, or "@" and the ordinal of what has no name.
    Names exports() const
    {
        const auto& table = *at<IMAGE_EXPORT_DIRECTORY>(directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
        const auto* addresses = at<DWORD>(table.AddressOfFunctions);
        const auto* names = at<DWORD>(table.AddressOfNames);
        const auto* indices = at<WORD>(table.AddressOfNameOrdinals);
        Names found;
        std::set<DWORD> named;
        for (DWORD i = 0; i < table.NumberOfNames; ++i) {
            found.insert(readable(at<char>(names[i])));
            named.insert(indices[i]);
        }
        for (DWORD i = 0; i < table.NumberOfFunctions; ++i) {
            if (addresses[i] != 0 && !named.contains(i))
                found.insert("@" + std::to_string(table.Base + i));
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

    static std::string readable(const char* name)
    {
        const std::unique_ptr<char, decltype(&std::free)> text(abi::__cxa_demangle(name, nullptr, nullptr, nullptr), &std::free);
        return text ? text.get() : name;
    }

    HMODULE m_library;
    const std::byte* m_base;
};

TEST(ModuleLibrary, ImportsTheEditorsNumberedServicesByTheirOrdinals)
{
    auto imports = LibraryTables("filewatcher").imports();
    EXPECT_EQ(imports["txapi.dll"], (Names{"@15",
                                           "@16",
                                           "@18",
                                           "@19",
                                           "@32",
                                           "@34",
                                           "@78",
                                           "@79",
                                           "@195",
                                           "@266",
                                           "@306",
                                           "@311",
                                           "@567",
                                           "@575",
                                           "@600",
                                           "@737",
                                           "@883",
                                           "@884",
                                           "@913",
                                           "@798",
                                           "@1001",
                                           "@989",
                                           "@1005",
                                           "@1056",
                                           "@1204",
                                           "@1205",
                                           "txAbsolute",
                                           "txArgument",
                                           "txArgumentCount",
                                           "txDebugLog",
                                           "txFileSupportsGetFileTime",
                                           "txGetIntProperty",
                                           "txGetStringProperty",
                                           "txHvarAlloc",
                                           "txHvarFree",
                                           "txHvarGetString",
                                           "txKillTimer",
                                           "txSetCallback",
                                           "txSetIntProperty",
                                           "txSetStringProperty",
                                           "txSetTimer",
                                           "txTreeAdd",
                                           "txTreeClear",
                                           "txTreeRowCount",
                                           "txTreeSetDate",
                                           "txTreeSetModel",
                                           "txFindPicture",
                                           "txHvarField",
                                           "txHvarInitInstance",
                                           "txHvarSetString",
                                           "txXMLCFGGetAttributeCMString"}));
    imports.erase("txapi.dll");
    Names libraries;
    for (const auto& [library, names] : imports) {
        libraries.insert(library);
        for (const std::string& name : names)
            EXPECT_NE(name[0], '@') << library;
    }
    EXPECT_EQ(libraries, (Names{"KERNEL32.dll", "SHELL32.dll", "msvcrt.dll", "ole32.dll"}));  // the system's own, no compiler's
}

TEST(ModuleLibrary, ExportsItsEntryPointsAndTheEditorsClasses)
{
    const std::string string = "tamarin::TMString";
    const std::string iterator = "tamarin::TMIterator";
    const std::string view = "std::basic_string_view<char, std::char_traits<char> >";
    Names expected{
        "txDllInit",           "txDllExit",      "filewatcherAddPath", "filewatcherRemovePath", "filewatcherRemoveType",
        "filewatcherInitType", "filewatcherStop"};
    for (const char* operation : {"TMString()",
                                  "TMString(tamarin::TMString const&)",
                                  "TMString(tamarin::TMString&&)",
                                  "TMString(char const*)",
                                  "TMString(cmStringT const&)",
                                  "~TMString()",
                                  "operator=(tamarin::TMString const&)",
                                  "operator=(tamarin::TMString&&)",
                                  "operator=(char)",
                                  "operator=(char const*)",
                                  "operator=(TXLSTR const&)",
                                  "charAt(long long) const",
                                  "operator[](long long) const",
                                  "first_char() const",
                                  "last_char() const",
                                  "getCMString() const",
                                  "getCString() const",
                                  "getUCString() const",
                                  "operator cmStringT const&() const",
                                  "length() const",
                                  "length32() const",
                                  "isEmpty() const",
                                  "isNotEmpty() const",
                                  "isNull() const",
                                  "isNotNull() const"})
        expected.insert(string + "::" + operation);
    for (const std::string& text :
         {string + " const&", std::string("char"), std::string("char const*"), std::string("cmStringT const&"), view,
          std::string("cmThinStringT const&"), std::string("cmStringCatHelperT const&")}) {
        expected.insert(string + "::operator+(" + text + ") const");
        expected.insert(string + "::operator+=(" + text + ")");
    }
    for (const char* operation :
         {"TMIterator()", "TMIterator(tamarin::TMIterator const&)", "~TMIterator()", "operator=(tamarin::TMIterator const&)",
          "reset()", "pushStack(int)", "popStack()", "clearStack()", "copyStack(tamarin::TMIterator const&)", "top()"})
        expected.insert(iterator + "::" + operation);
    EXPECT_EQ(LibraryTables("filewatcher").exports(), expected);
}

TEST(EditorLibrary, ExportsTheNumberedServicesWithoutTheirNames)
{
    Names numbered;
    for (const std::string& entry : LibraryTables("txapi").exports()) {
        if (entry[0] == '@')
            numbered.insert(entry);
    }
    EXPECT_EQ(numbered, (Names{"@15",  "@16",  "@18",  "@19",   "@32",   "@34",   "@78",   "@79",  "@195",
                               "@266", "@306", "@311", "@567",  "@575",  "@600",  "@737",  "@798", "@883",
                               "@884", "@913", "@989", "@1001", "@1005", "@1056", "@1204", "@1205"}));
}

}  // namespace
