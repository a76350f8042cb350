#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/images.h"
#include "tests/simulated/call_gate.h"
#include "tests/simulated/icon_table.h"

namespace sylvex {

/// Image lists that hold their pictures in words, as the icons told them.
class SimulatedImages final : public Images {
public:
    SimulatedImages(CallGate& gate, const IconTable& icons) : m_gate(gate), m_icons(icons) {}
    /// The pictures of a list in order, such as "Shell32.dll,34"; empty for a list that does not exist.
    std::vector<std::string> Pictures(ImageListHandle list) const;
    /// One picture of a list, empty when there is none.
    std::string Picture(ImageListHandle list, int index) const;
    /// A new list with one picture, as the platform makes for a drag; the receiver destroys it.
    ImageListHandle CreateWith(const std::string& picture, Size size);
    /// The size of a list's pictures, 16 pixels square unless it was made with another one; empty for no list.
    Size PictureSize(ImageListHandle list) const;
    /// Lists not destroyed yet: above 0 at the end of a test is a leak.
    int Live() const { return static_cast<int>(m_lists.size()); }
    /// Lists destroyed twice, or that never were.
    int BadFrees() const { return m_badFrees; }

    ImageListHandle Create() override;
    void Destroy(ImageListHandle list) noexcept override;
    int Add(ImageListHandle list, IconHandle icon) override;
    int Count(ImageListHandle list) override;

private:
    CallGate& m_gate;
    const IconTable& m_icons;
    std::map<ImageListHandle, std::vector<std::string>> m_lists;
    std::map<ImageListHandle, Size> m_sizes;
    ImageListHandle m_last = 0x11000;
    int m_badFrees = 0;
};

}  // namespace sylvex
