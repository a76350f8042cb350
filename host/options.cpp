#include "host/options.h"

#include <functional>
#include <map>

namespace sylvex::host {
namespace {

bool IsSeparator(wchar_t character)
{
    return character == L'\\' || character == L'/';
}

bool IsDriveLetter(wchar_t character)
{
    return (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z');
}

/// Takes one name of a path; false when it leads above the root.
bool AddName(std::vector<std::wstring>& names, std::wstring_view name)
{
    if (name.empty() || name == L".") return true;
    if (name != L"..") {
        names.emplace_back(name);
        return true;
    }
    if (names.empty()) return false;
    names.pop_back();
    return true;
}

TreePath RequirePath(std::wstring_view option, const std::wstring& text)
{
    if (auto path = ParseTreePath(text)) return *std::move(path);
    throw UsageError(std::wstring(option) + L": not an absolute path with a drive: " + text);
}

bool RequireSwitch(std::wstring_view option, const std::wstring& text)
{
    if (text == L"on") return true;
    if (text == L"off") return false;
    throw UsageError(std::wstring(option) + L": on or off expected, not " + text);
}

std::wstring RequireFile(std::wstring_view option, const std::wstring& text)
{
    if (text.empty()) throw UsageError(std::wstring(option) + L": a file name is missing");
    return text;
}

using ValueReader = std::function<void(Options&, std::wstring_view, const std::wstring&)>;
using Flag = bool Options::*;

const std::map<std::wstring, ValueReader, std::less<>>& ValueOptions()
{
    static const std::map<std::wstring, ValueReader, std::less<>> options = {
        {L"--open", [](Options& o, auto name, auto& value) { o.open = RequirePath(name, value); }},
        {L"--check", [](Options& o, auto name, auto& value) { o.checks.push_back(RequirePath(name, value)); }},
        {L"--find-row",
         [](Options& o, auto, auto& value) {
             o.rows.push_back({RowCommand::Find, value});
         }},
        {L"--tick-row",
         [](Options& o, auto, auto& value) {
             o.rows.push_back({RowCommand::Tick, value});
         }},
        {L"--untick-row",
         [](Options& o, auto, auto& value) {
             o.rows.push_back({RowCommand::Untick, value});
         }},
        {L"--path", [](Options& o, auto name, auto& value) { o.path = RequirePath(name, value); }},
        {L"--patterns", [](Options& o, auto, auto& value) { o.patterns = value; }},
        {L"--file-filter", [](Options& o, auto, auto& value) { o.fileFilter = value; }},
        {L"--recursive", [](Options& o, auto name, auto& value) { o.recursive = RequireSwitch(name, value); }},
        {L"--drag-drop", [](Options& o, auto name, auto& value) { o.dragDrop = RequireSwitch(name, value); }},
        {L"--csv", [](Options& o, auto name, auto& value) { o.csv = RequireFile(name, value); }},
        {L"--script", [](Options& o, auto name, auto& value) { o.script = RequireFile(name, value); }},
        {L"--ready-file", [](Options& o, auto name, auto& value) { o.readyFile = RequireFile(name, value); }},
    };
    return options;
}

const std::map<std::wstring, Flag, std::less<>>& FlagOptions()
{
    static const std::map<std::wstring, Flag, std::less<>> options = {
        {L"--exit", &Options::exit},
        {L"--help", &Options::help},
        {L"-h", &Options::help},
    };
    return options;
}

/// Reads the argument at `index` and its value, if it takes one; returns the index of the next argument.
size_t ReadArgument(Options& options, const std::vector<std::wstring>& arguments, size_t index)
{
    const std::wstring& argument = arguments[index];
    const size_t equals = argument.starts_with(L"--") ? argument.find(L'=') : std::wstring::npos;
    const std::wstring name = argument.substr(0, equals);

    if (const auto flag = FlagOptions().find(name); flag != FlagOptions().end()) {
        if (equals != std::wstring::npos) throw UsageError(name + L" takes no value");
        options.*flag->second = true;
        return index + 1;
    }
    const auto reader = ValueOptions().find(name);
    if (reader == ValueOptions().end()) throw UsageError(L"unknown argument: " + argument);
    if (equals != std::wstring::npos) {
        reader->second(options, name, argument.substr(equals + 1));
        return index + 1;
    }
    if (index + 1 == arguments.size()) throw UsageError(name + L" needs a value");
    reader->second(options, name, arguments[index + 1]);
    return index + 2;
}

}  // namespace

std::wstring TreePath::Text() const
{
    std::wstring text = drive;
    for (const std::wstring& name : names) {
        if (text.back() != L'\\') text += L'\\';
        text += name;
    }
    return text;
}

std::optional<TreePath> ParseTreePath(std::wstring_view text)
{
    if (text.size() < 2 || !IsDriveLetter(text[0]) || text[1] != L':') return std::nullopt;
    // "C:name" is relative to the current folder of the drive.
    if (text.size() > 2 && !IsSeparator(text[2])) return std::nullopt;

    constexpr wchar_t kToUpper = L'a' - L'A';
    TreePath path;
    path.drive = {text[0] >= L'a' ? static_cast<wchar_t>(text[0] - kToUpper) : text[0], L':', L'\\'};
    for (size_t start = 2; start < text.size();) {
        size_t end = start;
        while (end < text.size() && !IsSeparator(text[end]))
            ++end;
        if (!AddName(path.names, text.substr(start, end - start))) return std::nullopt;
        start = end + 1;
    }
    return path;
}

Options ParseOptions(const std::vector<std::wstring>& arguments)
{
    Options options;
    for (size_t index = 0; index < arguments.size();)
        index = ReadArgument(options, arguments, index);
    return options;
}

std::wstring_view UsageText()
{
    return LR"(Usage: SylvexHost [OPTION...]

Shows the Sylvex control beside a list view that it fills with what is ticked.

  --open PATH          expand the tree down to a file or folder and select it
  --check PATH         tick a file or folder; may be given several times
  --find-row TEXT      go to the node of the row with this text in its first column, as a double click does
  --tick-row TEXT      tick that node again, as Insert does in the list
  --untick-row TEXT    untick it, as Delete does; all three in the order given, and as often as wanted
  --path PATH          go to a file or folder, as Enter does in the field "Go to"
  --file-filter TEXT   FileFilter: patterns of the files in the tree, "*.zip;*.txt"
  --patterns TEXT      BuildFileListFilter: patterns of a ticked folder, "*.txt|*.doc"
  --recursive on|off   RecursiveCheck: whether a folder is ticked with all below it (on)
  --drag-drop on|off   DragDropEnable: whether folders and files can be dragged, and renamed with F2 (off)
  --csv FILE           write the list as CSV (UTF-8) once it is built; - is standard output
  --script FILE        run a script (.vbs, .js) that knows the objects Sylvex, List and Host
                       (Host.Echo, Log, Wait, Quit, ListWindow) and may define Sylvex_NodeCheck(Node) ...
  --ready-file FILE    write an empty file when everything is done and painted
  --exit               leave after that, instead of keeping the window open
  --help               print this text

A PATH is absolute and starts with a drive. With --csv, --ready-file or --exit nothing waits for
a person: message boxes are answered, and a failure ends the program.

Exit status: 0 done, 1 something failed, 2 wrong arguments.
)";
}

}  // namespace sylvex::host
