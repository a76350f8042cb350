#include "selection/tool_formats.h"

#include "platform/runtime_error.h"

namespace sylvex {

namespace {

using Entry = PathRules::Entry;

RuntimeError NoWordsFor(const std::wstring& path)
{
    return {321, L"Invalid file format: it has no words for " + path};
}

/// What is taken of a folder: what no rule inside of it names.
struct Taken {
    bool folders;
    bool files;
};

Taken TakenOf(const Entry& entry, bool inherited)
{
    const bool state = entry.branch.value_or(inherited);
    return {state, entry.files.value_or(state)};
}

/// The folder at which the rules of a tool are rooted.
struct RootFolder {
    const Entry* entry;  ///< null when nothing is said of it or of what is below
    Taken taken;
};

void RefuseTaken(const Entry& entry, const std::wstring& path)
{
    if (entry.branch.value_or(false) || entry.files.value_or(false)) throw NoWordsFor(path);
    for (const auto& [lower, child] : entry.below)
        RefuseTaken(*child, path.empty() ? child->name : path + L'\\' + child->name);
}

/// Raises 321 when something outside of it is taken.
RootFolder FindRoot(const PathRules& rules, const std::wstring& root)
{
    const Entry* entry = &rules.Root();
    bool state = false;
    std::wstring path;
    for (const std::wstring_view name : NamesOf(root)) {
        const auto found = rules.Find(*entry, name);
        for (const auto& [lower, child] : entry->below)
            if (child.get() != found) RefuseTaken(*child, path + child->name);
        if (found == nullptr) return {nullptr, {state, entry->files.value_or(state)}};
        path += found->name + L'\\';
        entry = found;
        state = entry->branch.value_or(state);
    }
    return {entry, TakenOf(*entry, state)};
}

bool IsHalfPair(std::wstring_view text)
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

/// A name as a pattern that fits nothing else. Raises 321 for one that no line of such a file can hold.
std::wstring AsPattern(const std::wstring& name, const std::wstring& path, bool escapesBlanks)
{
    std::wstring pattern;
    for (const wchar_t letter : name) {
        if (letter == L'\n' || letter == L'\r' || letter == L'\0') throw NoWordsFor(path);
        if (letter == L'[' || letter == L'*' || letter == L'?') pattern += L'\\';
        pattern += letter;
    }
    if (IsHalfPair(name)) throw NoWordsFor(path);
    if (escapesBlanks && pattern.ends_with(L' ')) pattern.insert(pattern.size() - 1, 1, L'\\');
    return pattern;
}

/// Of the rules that fit, rsync takes the first; what none fits is taken.
void WriteRsync(const Entry& folder, Taken taken, const std::wstring& at, const std::wstring& path, std::wstring& text)
{
    for (const auto& [lower, child] : folder.below) {
        const std::wstring childPath = path + L'\\' + child->name;
        const std::wstring pattern = at + AsPattern(child->name, childPath, false);
        const Taken inside = TakenOf(*child, taken.folders);
        if (child->IsFolder()) {
            text += L"+ " + pattern + L"/\n";
            WriteRsync(*child, inside, pattern + L'/', childPath, text);
        } else {
            text += (inside.folders ? L"+ " : L"- ") + pattern + L'\n';
        }
    }
    if (taken.folders && !taken.files) text += L"+ " + at + L"*/\n";
    if (!taken.folders && taken.files) text += L"- " + at + L"*/\n";
    if (!taken.files) text += L"- " + at + L"*\n";
}

/// Of the patterns that fit, git takes the last; nothing inside an ignored folder comes back.
void WriteGit(const Entry& folder, Taken taken, const std::wstring& at, const std::wstring& path, std::wstring& text)
{
    if (!taken.files) text += at + L"*\n";
    if (taken.folders && !taken.files) text += L'!' + at + L"*/\n";
    if (!taken.folders && taken.files) text += at + L"*/\n";
    for (const auto& [lower, child] : folder.below) {
        const std::wstring childPath = path + L'\\' + child->name;
        const std::wstring pattern = at + AsPattern(child->name, childPath, true);
        const Taken inside = TakenOf(*child, taken.folders);
        if (child->IsFolder()) {
            if (!taken.folders) text += L'!' + pattern + L"/\n";
            WriteGit(*child, inside, pattern + L'/', childPath, text);
        } else {
            text += (inside.folders ? L"!" : L"") + pattern + L'\n';
        }
    }
}

template <class Write>
std::wstring Rooted(const PathRules& rules, const std::wstring& root, Write&& write)
{
    static const Entry nothing;
    const RootFolder folder = FindRoot(rules, root);
    std::wstring text;
    const std::wstring path = root.ends_with(L'\\') ? root.substr(0, root.size() - 1) : root;
    write(folder.entry != nullptr ? *folder.entry : nothing, folder.taken, L"/", path, text);
    return text;
}

/// One command for each branch that is taken, and for each that is taken inside of one that is not.
class Robocopy {
public:
    std::wstring Write(const PathRules& rules)
    {
        m_text =
            L"@echo off\r\n"
            L"rem Copies what was selected below the folder that is the argument.\r\n"
            L"chcp 65001 >nul\r\n";
        Visit(rules.Root(), false, {});
        return std::move(m_text);
    }

private:
    void Visit(const Entry& entry, bool inherited, const std::wstring& path)
    {
        const Taken taken = TakenOf(entry, inherited);
        if (taken.folders && !taken.files) throw NoWordsFor(path);
        if (taken.folders && !inherited) WriteBranch(entry, path);
        if (!taken.folders && taken.files)
            Put(L"robocopy " + Source(path) + L' ' + Target(path) + LeftOut(entry, path, false));
        for (const auto& [lower, child] : entry.below)
            Visit(*child, taken.folders, path.empty() ? child->name : path + L'\\' + child->name);
    }

    void WriteBranch(const Entry& entry, const std::wstring& path)
    {
        const std::wstring folder =
            L"robocopy " + Source(path) + L' ' + Target(path) + L" /e" + LeftOut(entry, path, true);
        const std::size_t name = path.rfind(L'\\');
        if (entry.IsFolder() || name == std::wstring::npos) return Put(folder);
        const std::wstring above = path.substr(0, name);
        Put(L"if exist " + Quoted(path + L"\\*") + L" (" + folder + L") else robocopy " + Source(above) + L' ' +
            Target(above) + L' ' + Quoted(path.substr(name + 1)));
    }

    /// The switches for what is left out of the branch, or of the files right in the folder.
    static std::wstring LeftOut(const Entry& entry, const std::wstring& path, bool isBranch)
    {
        std::wstring folders;
        std::wstring files;
        Collect(entry, path, isBranch, folders, files);
        return (folders.empty() ? L"" : L" /xd" + folders) + (files.empty() ? L"" : L" /xf" + files);
    }

    static void Collect(const Entry& entry, const std::wstring& path, bool isBranch, std::wstring& folders,
                        std::wstring& files)
    {
        for (const auto& [lower, child] : entry.below) {
            const std::wstring childPath = path + L'\\' + child->name;
            if (child->branch.value_or(true)) {
                if (isBranch) Collect(*child, childPath, isBranch, folders, files);
                continue;
            }
            // Which of both it is shows when the commands run.
            if (isBranch) folders += L' ' + Quoted(childPath);
            if (!child->IsFolder()) files += L' ' + Quoted(childPath);
        }
    }

    static std::wstring Quoted(const std::wstring& path)
    {
        std::wstring quoted = L"\"";
        for (const wchar_t letter : path) {
            if (static_cast<std::uint32_t>(letter) < 0x20 || letter == L'"') throw NoWordsFor(path);
            quoted += letter;
            if (letter == L'%') quoted += letter;
        }
        if (IsHalfPair(path)) throw NoWordsFor(path);
        return quoted + L'"';
    }
    /// A separator before the quote would take its meaning away.
    static std::wstring Source(const std::wstring& path) { return Quoted(path.size() == 2 ? path + L"\\." : path); }
    static std::wstring Target(const std::wstring& path)
    {
        std::wstring below = path.substr(path.find_first_not_of(L'\\'));
        std::erase(below, L':');
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
    return Rooted(rules, root, WriteRsync);
}

std::wstring GitIgnoreRules(const PathRules& rules, const std::wstring& root)
{
    return Rooted(rules, root, WriteGit);
}

std::wstring RobocopyCommands(const PathRules& rules)
{
    return Robocopy().Write(rules);
}

}  // namespace sylvex
