#pragma once

#include <map>
#include <string>
#include <vector>

namespace sylvex::test {

/// Where each file and folder of a scratch folder lies, known by what it holds and not by its name: a file by its
/// bytes, a folder by the bytes of a hidden file in it, which goes wherever the folder goes.
class Census {
public:
    /// One file or folder: what its folder is known by, and its name there.
    struct Place {
        std::string folder;
        std::wstring name;
        bool isFolder;
        bool operator==(const Place&) const = default;
    };
    static constexpr wchar_t kMark[] = L".mark";

    /// Reads every byte below `base`.
    explicit Census(const std::wstring& base);

    /// All of them, by what they are known by, but for `base` itself.
    std::map<std::string, Place> places;
    /// What is there without being known, or twice; empty when every file and folder is accounted for.
    std::wstring odd;
    /// What `base` is known by.
    std::string top;

    /// The path below `base`, beginning with a separator; empty for `base`, "?" for what is not there.
    std::wstring PathOf(const std::string& known) const;
    /// What is at a path below `base` without regard to letter case; empty when nothing is.
    std::string At(const std::wstring& path) const;
    /// The names that the tree shows in a folder, each with what it is known by.
    std::map<std::wstring, std::string> Shown(const std::string& folder) const;
    bool IsFolder(const std::string& known) const;
    /// Whether `known` lies in `folder` or in a folder of it, or is `folder` itself.
    bool IsWithin(const std::string& known, const std::string& folder) const;

private:
    void Add(const std::string& known, Place place);
};

/// What has another place, or is in one only, a line each; empty when both are equal.
std::wstring Difference(const Census& before, const Census& after);

}  // namespace sylvex::test
