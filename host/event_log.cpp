#include "host/event_log.h"

#include <cstdio>

namespace sylvex::host {
namespace {

constexpr int kMostLines = 2000;
/// The widest texts of the first columns.
constexpr wchar_t kTime[] = L"00:00:00.000";
constexpr wchar_t kName[] = L"PropertyChanged";
/// Between columns, in quarters of an average character.
constexpr int kGap = 10;

std::wstring LineOf(std::wstring_view what, std::wstring_view details)
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t time[16];
    std::swprintf(time, std::size(time), L"%02d:%02d:%02d.%03d", now.wHour, now.wMinute, now.wSecond,
                  now.wMilliseconds);
    // The blanks keep what follows from painting over the edge of a last letter.
    return std::wstring(time) + L" \t" + std::wstring(what) + L" \t" + std::wstring(details);
}

}  // namespace

void EventLog::Attach(HWND box, const Metrics& metrics)
{
    m_box = box;
    const int unit = metrics.X(4);
    const int first = metrics.TextWidth(kTime) + metrics.X(kGap);
    m_tabs = {first, first + metrics.TextWidth(kName) + metrics.X(kGap)};
    // The box takes quarters of an average character.
    UINT stops[] = {static_cast<UINT>(MulDiv(m_tabs[0], 4, unit)), static_cast<UINT>(MulDiv(m_tabs[1], 4, unit))};
    SendMessageW(box, LB_SETTABSTOPS, std::size(stops), reinterpret_cast<LPARAM>(stops));
}

void EventLog::Add(std::wstring_view what, std::wstring_view details)
{
    m_latest.clear();
    Append(LineOf(what, details));
}

void EventLog::AddLatest(std::wstring_view what, std::wstring_view details)
{
    if (m_latest != what) {
        m_latest = what;
        m_repeats = 1;
        Append(LineOf(what, details));
        return;
    }
    ++m_repeats;
    const LRESULT last = SendMessageW(m_box, LB_GETCOUNT, 0, 0) - 1;
    SendMessageW(m_box, WM_SETREDRAW, FALSE, 0);
    SendMessageW(m_box, LB_DELETESTRING, static_cast<WPARAM>(last), 0);
    Append(LineOf(what, std::wstring(details) + L"   (" + std::to_wstring(m_repeats) + L" times)"));
    SendMessageW(m_box, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(m_box, nullptr, FALSE);
}

void EventLog::Append(const std::wstring& line)
{
    if (!m_box) return;
    if (SendMessageW(m_box, LB_GETCOUNT, 0, 0) >= kMostLines) SendMessageW(m_box, LB_DELETESTRING, 0, 0);
    const LRESULT index = SendMessageW(m_box, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    Widen(line);
    SendMessageW(m_box, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0);
}

void EventLog::Widen(const std::wstring& line)
{
    const HDC dc = GetDC(m_box);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(m_box, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(dc, font);
    const int length = static_cast<int>(line.size());
    const DWORD size = GetTabbedTextExtentW(dc, line.c_str(), length, static_cast<int>(m_tabs.size()), m_tabs.data());
    SelectObject(dc, before);
    ReleaseDC(m_box, dc);
    const int width = LOWORD(size) + GetSystemMetrics(SM_CXVSCROLL);
    if (width <= m_extent) return;
    m_extent = width;
    SendMessageW(m_box, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(m_extent), 0);
}

}  // namespace sylvex::host
