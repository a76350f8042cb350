#pragma once

#include "platform/network.h"

namespace sylvex {

/// The machine's connections.
class Win32Network : public Network {
public:
    bool Answers(const std::wstring& path) override;
};

}  // namespace sylvex
