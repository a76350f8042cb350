#pragma once

#include <windows.h>

#include <string>

namespace sylvex::host {

/// What the system says about a failure, in one line without a full stop; empty when it has nothing to say.
std::wstring DescribeResult(HRESULT result);

}  // namespace sylvex::host
