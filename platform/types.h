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
constexpr std::uint32_t kAttributeHidden = 2;
constexpr std::uint32_t kAttributeSystem = 4;
constexpr std::uint32_t kAttributeDirectory = 16;
/// The entry points somewhere else, or a driver of the file system keeps its content.
constexpr std::uint32_t kAttributeReparse = 1024;
/// The content is not at hand at once: on a tape, or with a store in a network.
constexpr std::uint32_t kAttributeOffline = 0x1000;
constexpr std::uint32_t kAttributeRecallOnOpen = 0x40000;
constexpr std::uint32_t kAttributeRecallOnRead = 0x400000;

/// One entry of a folder's listing. The texts stay valid until the search that gave them moves on.
struct FileEntry {
    std::uint32_t attributes = 0;
    std::int64_t creationTime = 0;    ///< 100-nanosecond intervals since 1601-01-01 UTC
    std::int64_t lastAccessTime = 0;  ///< likewise
    std::int64_t lastWriteTime = 0;   ///< likewise
    std::uint64_t size = 0;           ///< bytes
    std::wstring_view name;
    std::wstring_view shortName;   ///< the 8.3 name, empty when the name is already one
    std::uint32_t reparseTag = 0;  ///< whose a reparse point is; 0 where the platform does not tell

    bool IsDirectory() const { return (attributes & kAttributeDirectory) != 0; }
};

/// What a directory record tells of an entry beside its name; flags, of which none is an ordinary file.
enum EntryKind : std::uint8_t {
    kKindFolder = 1,
    kKindLink = 2,   ///< points to another place
    kKindCloud = 4,  ///< stands for what a store in a network keeps
    kKindOffline = 8,
    kKindHidden = 16,
    kKindSystem = 32
};
constexpr std::uint8_t KindOf(const FileEntry& entry)
{
    constexpr std::uint32_t kNamesAnotherPlace = 0x20000000;  // of any tag
    constexpr std::uint32_t kCloudTag = 0x9000001A;
    constexpr std::uint32_t kNumberOfCloud = 0xF000;
    const auto has = [&](std::uint32_t attributes) { return (entry.attributes & attributes) != 0; };
    const bool isReparse = has(kAttributeReparse);
    const bool isCloud = has(kAttributeRecallOnOpen | kAttributeRecallOnRead) ||
                         (isReparse && (entry.reparseTag & ~kNumberOfCloud) == kCloudTag);
    // A platform that names no tag means a link.
    const bool isLink =
        isReparse && !isCloud && (entry.reparseTag == 0 || (entry.reparseTag & kNamesAnotherPlace) != 0);
    return static_cast<std::uint8_t>((has(kAttributeDirectory) ? kKindFolder : 0) | (isLink ? kKindLink : 0) |
                                     (isCloud ? kKindCloud : 0) | (has(kAttributeOffline) ? kKindOffline : 0) |
                                     (has(kAttributeHidden) ? kKindHidden : 0) |
                                     (has(kAttributeSystem) ? kKindSystem : 0));
}

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
