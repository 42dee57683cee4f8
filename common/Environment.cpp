#include "common/Environment.h"

#include "common/cmStringCatHelper.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>

namespace {

using Setting = std::pair<cmROStringT, cmROStringT>;

constexpr std::array<Setting, 12> quietSettings{{
    {"GIT_OPTIONAL_LOCKS", "0"},     // a poll must not take index.lock
    {"GIT_NO_LAZY_FETCH", "1"},      // what a partial clone lacks would be fetched by a program that the repository names
    {"GIT_LITERAL_PATHSPECS", "1"},  // a[b] means the folder of that name
    {"GIT_TERMINAL_PROMPT", "0"},
    {"GIT_ASKPASS", ""},
    {"SSH_ASKPASS", ""},
    {"GCM_INTERACTIVE", "never"},
    {"GIT_PAGER", "cat"},
    {"GIT_FLUSH", "0"},  // otherwise git flushes its output after every commit of a log
    {"LC_MESSAGES", "C"},
    {"LC_CTYPE", "C.UTF-8"},  // svn rejects non-ASCII names in the plain C locale
    {"NoDefaultCurrentDirectoryInExePath", "1"},
}};

constexpr std::array<Setting, 15> gitConfiguration{{
    {"core.quotePath", "false"},
    {"color.ui", "false"},
    {"log.showSignature", "false"},
    {"log.showRoot", "true"},
    {"status.showUntrackedFiles", "no"},  // none is reported, and the search takes most of the time
    {"status.renames", "false"},          // slow for many staged files, and changes only what is not reported
    {"core.fsmonitor", "false"},          // polling a repository must not run a program that it configures
    {"log.diffMerges", "separate"},       // a merge lists its files too
    {"diff.noprefix", "false"},
    {"diff.mnemonicPrefix", "false"},
    {"diff.srcPrefix", "a/"},
    {"diff.dstPrefix", "b/"},
    {"diff.relative", "false"},
    {"diff.submodule", "short"},
    {"i18n.logOutputEncoding", "UTF-8"},
}};

constexpr std::array<cmROStringT, 25> removedNames{
    "LC_ALL",
    "LANGUAGE",
    "GIT_DIR",
    "GIT_WORK_TREE",
    "GIT_INDEX_FILE",
    "GIT_OBJECT_DIRECTORY",
    "GIT_ALTERNATE_OBJECT_DIRECTORIES",
    "GIT_COMMON_DIR",
    "GIT_NAMESPACE",
    "GIT_PREFIX",
    "GIT_EXTERNAL_DIFF",
    "GIT_CONFIG_PARAMETERS",
    "GIT_CONFIG_COUNT",
    "GIT_CONFIG",
    "GIT_SHALLOW_FILE",
    "GIT_GRAFT_FILE",
    "GIT_REPLACE_REF_BASE",
    "GIT_NO_REPLACE_OBJECTS",
    "GIT_GLOB_PATHSPECS",
    "GIT_NOGLOB_PATHSPECS",
    "GIT_ICASE_PATHSPECS",
    "GIT_DIFF_OPTS",
    "GIT_REDIRECT_STDIN",
    "GIT_REDIRECT_STDOUT",
    "GIT_REDIRECT_STDERR",
};

constexpr cmROStringT countName = "GIT_CONFIG_COUNT";

/// The name of a "NAME=VALUE" text. On Windows a name may begin with "=" (the current directories of the drives).
cmROStringT nameOf(cmROStringT variable)
{
    return variable.substr(0, variable.find('=', 1));
}

bool sameName(cmROStringT a, cmROStringT b, cmPathStyle style)
{
    return style == cmPathStyle::windows ? cmEqualIgnoringCase(a, b) : a == b;
}

cmStringT upperName(cmROStringT variable)
{
    cmStringT name(nameOf(variable));
    std::transform(name.c_str(), name.c_str() + name.length(), name.data(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return name;
}

/// Hash and equality of names.
struct SameName {
    cmPathStyle style;

    std::size_t operator()(cmROStringT name) const
    {
        return style == cmPathStyle::windows ? std::hash<cmStringT>()(cmLowerAscii(name)) : std::hash<cmROStringT>()(name);
    }
    bool operator()(cmROStringT a, cmROStringT b) const { return sameName(a, b, style); }
};

/// An environment that grows. Each variable occurs once; names are found without a search through all.
class Variables {
public:
    explicit Variables(cmPathStyle style) : m_positions(expectedCount, SameName{style}, SameName{style}) {}

    /// Adds "NAME=VALUE", unless the name is already there.
    void add(cmStringT variable)
    {
        if (m_positions.contains(nameOf(variable)))
            return;
        m_variables.push_back(std::move(variable));
        m_positions.emplace(nameOf(m_variables.back()), m_variables.size() - 1);
    }
    void set(cmROStringT name, cmROStringT value)
    {
        cmStringT variable = cmCat(name) + "=" + value;
        auto known = m_positions.extract(name);
        if (known.empty())
            return add(std::move(variable));
        cmStringT& replaced = m_variables[known.mapped()];
        replaced = std::move(variable);
        known.key() = nameOf(replaced);
        m_positions.insert(std::move(known));
    }
    void setAll(const Environment& settings)
    {
        for (const cmStringT& setting : settings) {
            const cmROStringT name = nameOf(setting);
            set(name, setting.view().substr(std::min(name.size() + 1, setting.length())));
        }
    }
    Environment take() { return std::move(m_variables); }

private:
    static constexpr std::size_t expectedCount = 128;

    Environment m_variables;
    std::unordered_map<cmROStringT, std::size_t, SameName, SameName> m_positions;  ///< the names are views of m_variables
};

bool isRemoved(cmROStringT variable, cmPathStyle style)
{
    const cmROStringT name = nameOf(variable);
    constexpr cmROStringT trace = "GIT_TRACE";
    return sameName(name.substr(0, trace.size()), trace, style)
           || std::any_of(removedNames.begin(), removedNames.end(),
                          [&](cmROStringT removed) { return sameName(name, removed, style); });
}

/// A folder that holds no hooks, as git would run those of the repository for a mere look (post-index-change). On Windows git
/// warns about a path that begins with a slash, each time, and anybody may create C:\dev; only administrators write to the
/// system's folder.
cmStringT folderWithoutHooks(const Environment& host, cmPathStyle style)
{
    const cmStringT system = style == cmPathStyle::windows ? environmentValue(host, "SystemRoot", style) : cmStringT();
    return system.isEmpty() ? cmStringT("/dev/null") : cmJoinPath(system, "no-hooks", style);
}

/// The number of GIT_CONFIG_KEY_n/VALUE_n pairs that the host has set; 0 when git would not accept its count.
int configurationCount(const Environment& environment, cmPathStyle style)
{
    const cmStringT text = environmentValue(environment, countName, style);
    int count = 0;
    const auto [end, error] = std::from_chars(text.c_str(), text.c_str() + text.length(), count);
    const bool whole = error == std::errc() && end == text.c_str() + text.length();
    constexpr int most = 100000;
    return whole && count > 0 && count <= most ? count : 0;
}

}  // namespace

cmStringT environmentValue(const Environment& environment, cmROStringT name, cmPathStyle style)
{
    for (const cmStringT& variable : environment) {
        const cmROStringT found = nameOf(variable);
        if (sameName(found, name, style) && variable.length() > found.size())
            return variable.view().substr(found.size() + 1);
    }
    return {};
}

Environment quietEnvironment(const Environment& host, const Environment& settings, cmPathStyle style)
{
    Variables quiet(style);
    for (const cmStringT& variable : host) {
        if (!isRemoved(variable, style))
            quiet.add(variable);
    }
    for (const auto& [name, value] : quietSettings)
        quiet.set(name, value);

    int index = configurationCount(host, style);
    const auto configure = [&](cmROStringT key, cmROStringT value) {
        const std::string number = std::to_string(index++);
        quiet.set("GIT_CONFIG_KEY_" + number, key);
        quiet.set("GIT_CONFIG_VALUE_" + number, value);
    };
    for (const auto& [key, value] : gitConfiguration)
        configure(key, value);
    configure("core.hooksPath", folderWithoutHooks(host, style));
    quiet.set(countName, std::to_string(index));
    quiet.setAll(settings);
    return quiet.take();
}

Environment withVariables(const Environment& environment, const Environment& settings, cmPathStyle style)
{
    Variables changed(style);
    for (const cmStringT& variable : environment)
        changed.add(variable);
    changed.setAll(settings);
    return changed.take();
}

Environment withoutVariable(Environment environment, cmROStringT name, cmPathStyle style)
{
    std::erase_if(environment, [&](const cmStringT& variable) { return sameName(nameOf(variable), name, style); });
    return environment;
}

Environment windowsEnvironmentOrder(Environment environment)
{
    const auto sameVariable = [](const cmStringT& a, const cmStringT& b) { return cmEqualIgnoringCase(nameOf(a), nameOf(b)); };
    const auto before = [](const cmStringT& a, const cmStringT& b) { return upperName(a) < upperName(b); };
    std::stable_sort(environment.begin(), environment.end(), before);
    environment.erase(std::unique(environment.begin(), environment.end(), sameVariable), environment.end());
    return environment;
}
