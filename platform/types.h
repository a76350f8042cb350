#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace sylvex {

/// Handles of the platform, carried as plain numbers; 0 is no window, icon, image list or item.
using WindowHandle = std::uintptr_t;
using IconHandle = std::uintptr_t;
using ImageListHandle = std::uintptr_t;
using ItemHandle = std::uintptr_t;

/// A point in pixels; the procedure says of which window or of the screen.
struct Point {
    int x = 0;
    int y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    int cx = 0;
    int cy = 0;
};

/// Pixels; right and bottom lie outside.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    bool operator==(const Rect&) const = default;
};

/// A signed 64-bit count of ten-thousandths.
struct Currency {
    std::int64_t units = 0;
    double Value() const { return static_cast<double>(units) / 10000.0; }
    bool operator==(const Currency&) const = default;
};

/// Days since 1899-12-30 00:00; the fraction is the time of day.
struct Date {
    double days = 0;
};

/// Attribute bits of a directory entry that the control looks at.
constexpr std::uint32_t kAttributeDirectory = 16;
/// The entry points somewhere else, or a driver of the file system keeps its content.
constexpr std::uint32_t kAttributeReparse = 1024;

/// One entry of a folder's listing. The texts stay valid until the search that gave them moves on.
struct FileEntry {
    std::uint32_t attributes = 0;
    std::int64_t creationTime = 0;    ///< 100-nanosecond intervals since 1601-01-01 UTC
    std::int64_t lastAccessTime = 0;  ///< likewise
    std::int64_t lastWriteTime = 0;   ///< likewise
    std::uint64_t size = 0;           ///< bytes
    std::wstring_view name;
    std::wstring_view shortName;  ///< the 8.3 name, empty when the name is already one

    bool IsDirectory() const { return (attributes & kAttributeDirectory) != 0; }
};

/// An automation object that passes through the control unseen (a font, a picture, a host's object).
class Object {
public:
    virtual ~Object() = default;
    /// The object as error reports show it, with tags and braces of its own. May run the object's code; throws what
    /// that fails with.
    virtual std::wstring ReportText() const { return L"{Object}"; }
};
using ObjectRef = std::shared_ptr<Object>;

}  // namespace sylvex
