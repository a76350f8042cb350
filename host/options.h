#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/failure.h"

namespace sylvex::host {

/// A drive and the names below it, as they are found one by one in the tree.
struct TreePath {
    /// Root as the tree keys it, such as "C:\", with an upper-case letter.
    std::wstring drive;
    /// Folder and file names from the root on; empty for the drive itself.
    std::vector<std::wstring> names;

    /// The path as a user writes it; only a drive's root ends in a backslash.
    std::wstring Text() const;
};

/// The path behind an absolute text such as `C:\Docs\a.txt`. Slashes count as backslashes, "." and ".." are resolved;
/// empty for anything else, paths of network shares included.
std::optional<TreePath> ParseTreePath(std::wstring_view text);

/// Something to do with the row of the list that has a text in its first column.
struct RowCommand {
    enum What { Find, Tick, Untick };
    What what;
    std::wstring row;
};

/// What the command line asks for.
struct Options {
    std::optional<TreePath> open;
    std::vector<TreePath> checks;
    std::vector<RowCommand> rows;
    /// Where to go last.
    std::optional<TreePath> path;
    /// Value for BuildFileListFilter; empty when it was not given.
    std::optional<std::wstring> patterns;
    /// Value for FileFilter; empty when it was not given.
    std::optional<std::wstring> fileFilter;
    bool recursive = true;
    bool dragDrop = false;
    /// File to write the list to, "-" for the standard output.
    std::optional<std::wstring> csv;
    std::optional<std::wstring> readyFile;
    /// Script to run once the paths have been opened and ticked.
    std::optional<std::wstring> script;
    bool exit = false;
    bool help = false;

    /// Whether a program waits for the result, so that nothing may wait for a person.
    bool Unattended() const { return exit || csv || readyFile; }
};

/// A command line that cannot be understood.
class UsageError : public Failure {
public:
    using Failure::Failure;
};

/// Reads the arguments after the program's name; values follow their option or stand behind "=". Throws UsageError.
Options ParseOptions(const std::vector<std::wstring>& arguments);

/// What --help prints.
std::wstring_view UsageText();

}  // namespace sylvex::host
