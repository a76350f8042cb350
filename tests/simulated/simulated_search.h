#pragma once

#include <memory>
#include <string_view>

#include "platform/filesystem.h"
#include "tests/simulated/simulated_disk.h"
#include "tests/simulated/wildcards.h"

namespace sylvex {

/// A listing of a folder of the simulated disk: "." and ".." unless it is a root, then the entries in the order in
/// which they were made. A name without wildcards is looked up, not searched.
class SimulatedSearch final : public FileSearch {
public:
    SimulatedSearch(std::shared_ptr<const DiskEntry> folder, bool root, std::wstring_view name, CallGate& gate,
                    std::shared_ptr<int> open);
    SimulatedSearch(const SimulatedSearch&) = delete;
    SimulatedSearch& operator=(const SimulatedSearch&) = delete;
    ~SimulatedSearch() override { --*m_open; }
    /// False: no entry matched.
    bool Found() const { return m_found; }
    const FileEntry& Entry() const override { return m_entry; }
    bool Next() override;

private:
    bool Advance();
    bool Show(const DiskEntry& entry, std::wstring_view name);
    std::shared_ptr<const DiskEntry> m_folder;
    std::shared_ptr<const DiskEntry> m_current;
    Wildcards m_wildcards;
    CallGate& m_gate;
    std::shared_ptr<int> m_open;
    std::size_t m_dots;
    std::size_t m_place = 0;
    bool m_single;
    bool m_found;
    FileEntry m_entry;
};

}  // namespace sylvex
