#pragma once

#include <string>

namespace sylvex {

/// Patience with servers.
class Network {
public:
    virtual ~Network() = default;
    /// False when `path` lies on a server that does not answer within a second and a half. A path of this machine
    /// always answers, whether it exists or not.
    virtual bool Answers(const std::wstring& path) = 0;
};

}  // namespace sylvex
