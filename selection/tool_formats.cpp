#include "selection/tool_formats.h"

#include <optional>
#include <vector>

#include "platform/runtime_error.h"

namespace sylvex {

namespace {

using Name = PathRules::Name;
using Taken = PathRules::Taken;

RuntimeError NoWordsFor(const std::wstring& path)
{
    return {321, L"Invalid file format: it has no words for " + path};
}

/// The folder at which the rules of a tool are rooted; nothing when no rule speaks of it or of what is below. Raises
/// 321 when something outside of it is taken.
std::optional<Name> FindRoot(const PathRules& rules, const std::wstring& root)
{
    std::optional<Name> found = PathRules::kDisks;
    for (const std::wstring_view name : NamesOf(root))
        if (found) found = rules.Below(*found, name);
    bool within = false;
    rules.Walk(
        PathRules::kDisks,
        [&](Name name) {
            within = within || name == found;
            if (!within && rules.Takes(name)) throw NoWordsFor(rules.PathOf(name));
            return true;
        },
        [&](Name name) { within = within && name != found; });
    return found;
}

bool HasHalfPair(std::wstring_view text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto code = static_cast<std::uint32_t>(text[at]);
        if (code < 0xD800 || code >= 0xE000) continue;
        const auto next = at + 1 < text.size() ? static_cast<std::uint32_t>(text[at + 1]) : 0;
        if (code >= 0xDC00 || next < 0xDC00 || next >= 0xE000) return true;
        ++at;
    }
    return false;
}

/// A name as a pattern that fits nothing else; nothing for one that no line of such a file can hold.
std::optional<std::wstring> AsPattern(const std::wstring& name, bool escapesBlanks)
{
    std::wstring pattern;
    for (const wchar_t letter : name) {
        if (letter == L'\n' || letter == L'\r' || letter == L'\0') return std::nullopt;
        if (letter == L'[' || letter == L'*' || letter == L'?') pattern += L'\\';
        pattern += letter;
    }
    if (HasHalfPair(name)) return std::nullopt;
    if (escapesBlanks && pattern.ends_with(L' ')) pattern.insert(pattern.size() - 1, 1, L'\\');
    return pattern;
}

/// Writes the rules below a root: `enter` for each name with its pattern, `leave` behind what is in it.
class RootedRules {
public:
    RootedRules(const PathRules& rules, bool escapesBlanks) : m_rules(rules), m_escapesBlanks(escapesBlanks) {}
    virtual ~RootedRules() = default;

    std::wstring Write(const std::wstring& root)
    {
        const auto top = FindRoot(m_rules, root);
        const Taken taken = top ? m_rules.Inside(*top, {}) : Taken{};
        Enter(L"/", taken);
        m_open.push_back({L"/", taken});
        if (top)
            m_rules.Walk(
                *top, [this](Name name) { return Begin(name); }, [this](Name name) { End(name); });
        Leave(L"/", taken);
        return std::move(m_text);
    }

protected:
    /// A folder of which more is said: `at` is its pattern with "/", `inside` what else is taken in it.
    virtual void Enter(const std::wstring& at, Taken inside) = 0;
    virtual void Leave(const std::wstring& at, Taken inside) = 0;
    virtual void EnterFolder(const std::wstring& pattern, bool isTakenAround) = 0;
    virtual void Single(const std::wstring& pattern, bool isTaken) = 0;
    void Put(const std::wstring& line) { m_text += line + L'\n'; }

private:
    struct Open {
        std::wstring at;
        Taken inside;
    };

    bool Begin(Name name)
    {
        const Open& around = m_open.back();
        const auto own = AsPattern(m_rules.Spelt(name), m_escapesBlanks);
        if (!own) throw NoWordsFor(m_rules.PathOf(name));
        const std::wstring pattern = around.at + *own;
        const Taken inside = m_rules.Inside(name, around.inside);
        if (!m_rules.IsFolder(name)) {
            Single(pattern, inside.folders);
            return false;
        }
        EnterFolder(pattern, around.inside.folders);
        Enter(pattern + L'/', inside);
        m_open.push_back({pattern + L'/', inside});
        return true;
    }
    void End(Name name)
    {
        if (!m_rules.IsFolder(name)) return;
        Leave(m_open.back().at, m_open.back().inside);
        m_open.pop_back();
    }

    const PathRules& m_rules;
    bool m_escapesBlanks;
    std::vector<Open> m_open;
    std::wstring m_text;
};

/// Of the rules that fit, rsync takes the first; what none fits is taken.
class Rsync final : public RootedRules {
public:
    explicit Rsync(const PathRules& rules) : RootedRules(rules, false) {}

private:
    void Enter(const std::wstring&, Taken) override {}
    void EnterFolder(const std::wstring& pattern, bool) override { Put(L"+ " + pattern + L'/'); }
    void Single(const std::wstring& pattern, bool isTaken) override { Put((isTaken ? L"+ " : L"- ") + pattern); }
    void Leave(const std::wstring& at, Taken inside) override
    {
        if (inside.folders && !inside.files) Put(L"+ " + at + L"*/");
        if (!inside.folders && inside.files) Put(L"- " + at + L"*/");
        if (!inside.files) Put(L"- " + at + L'*');
    }
};

/// Of the patterns that fit, git takes the last; nothing inside an ignored folder comes back.
class GitIgnore final : public RootedRules {
public:
    explicit GitIgnore(const PathRules& rules) : RootedRules(rules, true) {}

private:
    void Enter(const std::wstring& at, Taken inside) override
    {
        if (!inside.files) Put(at + L'*');
        if (inside.folders && !inside.files) Put(L'!' + at + L"*/");
        if (!inside.folders && inside.files) Put(at + L"*/");
    }
    void EnterFolder(const std::wstring& pattern, bool isTakenAround) override
    {
        if (!isTakenAround) Put(L'!' + pattern + L'/');
    }
    void Single(const std::wstring& pattern, bool isTaken) override { Put((isTaken ? L"!" : L"") + pattern); }
    void Leave(const std::wstring&, Taken) override {}
};

/// One command for each branch that is taken, and for each that is taken inside of one that is not.
class Robocopy {
public:
    std::wstring Write(const PathRules& rules)
    {
        m_text =
            L"@echo off\r\n"
            L"rem Copies what was selected below the folder that is the argument.\r\n"
            L"chcp 65001 >nul\r\n";
        std::vector<Taken> open{{}};
        rules.Walk(
            PathRules::kDisks,
            [&](Name name) {
                const Taken around = open.back();
                open.push_back(rules.Inside(name, around));
                Visit(rules, name, around, open.back());
                return true;
            },
            [&](Name) { open.pop_back(); });
        return std::move(m_text);
    }

private:
    void Visit(const PathRules& rules, Name name, Taken around, Taken inside)
    {
        const bool begins = inside.folders && !around.folders;
        if (!begins && inside.folders == inside.files) return;
        const std::wstring path = rules.PathOf(name);
        if (inside.folders && !inside.files) throw NoWordsFor(path);
        if (begins) return WriteBranch(rules, name, path);
        Put(L"robocopy " + Source(path) + L' ' + Target(path) + LeftOut(rules, name, false));
    }

    void WriteBranch(const PathRules& rules, Name name, const std::wstring& path)
    {
        const std::wstring folder =
            L"robocopy " + Source(path) + L' ' + Target(path) + L" /e" + LeftOut(rules, name, true);
        const std::size_t last = path.rfind(L'\\');
        if (rules.IsFolder(name) || last + 1 == path.size() || path.find(L'\\') == path.npos) return Put(folder);
        const std::wstring above = path.substr(0, last);
        Put(L"if exist " + Quoted(path + L"\\*") + L" (" + folder + L") else robocopy " + Source(above) + L' ' +
            Target(above) + L' ' + Quoted(path.substr(last + 1)));
    }

    /// The switches for what is left out of the branch, or of the files right in the folder.
    static std::wstring LeftOut(const PathRules& rules, Name top, bool isBranch)
    {
        std::wstring folders;
        std::wstring files;
        rules.Walk(
            top,
            [&](Name name) {
                if (rules.Branch(name).value_or(true)) return isBranch;
                const std::wstring path = rules.PathOf(name);
                // Which of both it is shows when the commands run.
                if (isBranch) folders += L' ' + Quoted(path);
                if (!rules.IsFolder(name)) files += L' ' + Quoted(path);
                return false;
            },
            [](Name) {});
        return (folders.empty() ? L"" : L" /xd" + folders) + (files.empty() ? L"" : L" /xf" + files);
    }

    static std::wstring Quoted(const std::wstring& path)
    {
        std::wstring quoted = L"\"";
        for (const wchar_t letter : path) {
            if (static_cast<std::uint32_t>(letter) < 0x20 || letter == L'"') throw NoWordsFor(path);
            quoted += letter;
            if (letter == L'%') quoted += letter;
        }
        if (HasHalfPair(path)) throw NoWordsFor(path);
        return quoted + L'"';
    }
    /// A separator before the quote would take its meaning away.
    static std::wstring Source(const std::wstring& path) { return Quoted(path.ends_with(L'\\') ? path + L'.' : path); }
    static std::wstring Target(const std::wstring& path)
    {
        std::wstring below = path.substr(path.find_first_not_of(L'\\'));
        std::erase(below, L':');
        if (below.ends_with(L'\\')) below.pop_back();
        return L"\"%~1\\" + Quoted(below).substr(1);
    }
    void Put(const std::wstring& command)
    {
        constexpr std::size_t kLongest = 8191;
        if (command.size() > kLongest) throw NoWordsFor(command);
        m_text += command + L"\r\n";
    }

    std::wstring m_text;
};

}  // namespace

std::wstring RsyncRules(const PathRules& rules, const std::wstring& root)
{
    return Rsync(rules).Write(root);
}

std::wstring GitIgnoreRules(const PathRules& rules, const std::wstring& root)
{
    return GitIgnore(rules).Write(root);
}

std::wstring RobocopyCommands(const PathRules& rules)
{
    return Robocopy().Write(rules);
}

}  // namespace sylvex
