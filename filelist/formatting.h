#pragma once

#include <cstdint>
#include <string>

#include "diagnostics/named_module.h"

namespace sylvex {

/// The module modSylvexDeclares as reports know it.
class DeclaresModule final : public NamedModule {
public:
    explicit DeclaresModule(const Platform& platform) : NamedModule(L"modSylvexDeclares", platform) {}
    void DumpVariables(Dump& dump) const override { DumpAll(dump); }
    static void DumpAll(Dump& dump);
};

/// Bytes as text with four significant digits in 1024-based units; "Out of bounds" from 10^24 kilobytes on, "Overflow"
/// when the computation fails.
std::wstring FormatSize(const Module& module, Regional& regional, double Size);

/// A file time (as a currency: milliseconds since 1601) as a date, in local time when `TooLocal`. 0 stands for
/// 1980-01-01 03:00 UTC.
Date UTCCurrToVbDate(const Module& module, Regional& regional, Currency UTC, bool TooLocal);

/// Short date, one blank, long time.
std::wstring FormGenDatTim(const Module& module, Regional& regional, Date MyDate);

/// Fifteen characters, one for each attribute bit from 0 to 14: its letter, or a full stop.
std::wstring GetAttrString(const Module& module, std::uint32_t Attr);

/// The first eight bytes of the text in the narrow code page as a little-endian integer; missing bytes are 0.
Currency CVC(const Module& module, Regional& regional, const std::wstring& ValToConvert);

}  // namespace sylvex
