#include "reporter.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <new>
#include <string>
#include <string_view>

#include "com/variant.h"

namespace {

constexpr const wchar_t* kMembers[] = {L"ErrorHandler", L"Action"};
enum Member : DISPID { kErrorHandler = 1, kAction };

/// The eight values in the order in which the control gives them.
enum Part { kComponent, kVersion, kModule, kProcedure, kLine, kNumber, kDescription, kVariables, kParts };
using Report = std::array<std::wstring, kParts>;

/// The file is moved aside at this size, and a longer report is cut: with the one before it never takes more than twice
/// as much.
constexpr std::size_t kMostBytes = std::size_t{1024} * 1024;

/// The folder SylvexReports in the folder of temporary files, made if need be; a link in its place is not followed.
std::wstring OwnFolder(const std::wstring& temporary)
{
    const std::wstring folder = temporary + L"SylvexReports";
    CreateDirectoryW(folder.c_str(), nullptr);
    const DWORD attributes = GetFileAttributesW(folder.c_str());
    constexpr DWORD kAsked = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    return (attributes & kAsked) == FILE_ATTRIBUTE_DIRECTORY ? folder : std::wstring();
}

/// Where reports go: the file named by SYLVEX_REPORTS, otherwise Reports.txt in a folder of its own. Empty when there
/// is no such folder.
std::wstring FileName()
{
    std::array<wchar_t, 32768> path{};
    const DWORD given = GetEnvironmentVariableW(L"SYLVEX_REPORTS", path.data(), static_cast<DWORD>(path.size()));
    if (given > 0 && given < path.size()) return path.data();
    const DWORD length = GetTempPathW(static_cast<DWORD>(path.size()), path.data());
    const std::wstring folder = OwnFolder(std::wstring(path.data(), length));
    return folder.empty() ? folder : folder + L"\\Reports.txt";
}

std::string Utf8(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), bytes, nullptr, nullptr);
    return narrow;
}

std::wstring Heading(const Report& report)
{
    SYSTEMTIME now;
    GetSystemTime(&now);
    std::array<wchar_t, 32> time{};
    std::swprintf(time.data(), time.size(), L"%04d-%02d-%02dT%02d:%02d:%02dZ", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return std::wstring(time.data()) + L" " + report[kComponent] + L" " + report[kVersion] + L" " + report[kModule] +
           L"." + report[kProcedure] + L", line " + report[kLine] + L": error " + report[kNumber] + L", " +
           report[kDescription];
}

/// A file opened for writing at its end, closed with the object.
class LogFile {
public:
    explicit LogFile(const std::wstring& name)
        : m_file(CreateFileW(name.c_str(), FILE_APPEND_DATA | FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                             nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr))
    {
        constexpr DWORD kNotPlain = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
        BY_HANDLE_FILE_INFORMATION found{};
        // What stands there under two names, or leads elsewhere, is somebody's trap or somebody's other file.
        m_isPlain = m_file != INVALID_HANDLE_VALUE && GetFileInformationByHandle(m_file, &found) &&
                    (found.dwFileAttributes & kNotPlain) == 0 && found.nNumberOfLinks == 1;
        m_isFull = found.nFileSizeHigh != 0 || found.nFileSizeLow >= kMostBytes;
    }
    ~LogFile()
    {
        if (m_file != INVALID_HANDLE_VALUE) CloseHandle(m_file);
    }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    bool IsPlain() const { return m_isPlain; }
    bool IsFull() const { return m_isFull; }
    /// What is written by several processes at once stays whole, since each write goes to the end.
    bool Append(const std::string& text)
    {
        DWORD written = 0;
        return m_isPlain && !m_isFull &&
               WriteFile(m_file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
               written == text.size();
    }

private:
    HANDLE m_file;
    bool m_isPlain = false;
    bool m_isFull = false;
};

/// Appends one report. A file that is full takes the place of the one that was full before it; while others hold it
/// open it cannot, and reports are dropped.
bool Append(const Report& report)
{
    std::string text = Utf8(Heading(report) + L"\r\n" + report[kVariables] + L"\r\n\r\n");
    text.resize(std::min(text.size(), kMostBytes));
    const std::wstring name = FileName();
    if (name.empty()) return false;
    bool isFull = false;
    {
        const LogFile present(name);
        if (!present.IsPlain()) return false;
        isFull = present.IsFull();
    }
    if (isFull) MoveFileExW(name.c_str(), (name + L".old").c_str(), MOVEFILE_REPLACE_EXISTING);
    return LogFile(name).Append(text);
}

std::wstring TextOf(const VARIANT& value)
{
    sylvex::Variant text;
    text.SetTo(value, VT_BSTR, VARIANT_ALPHABOOL);
    return std::wstring(text.Text());
}

HRESULT TakeReport(const DISPPARAMS& arguments)
{
    if (arguments.cArgs != kParts) return DISP_E_BADPARAMCOUNT;
    Report report;
    // Automation hands over the last argument first.
    for (UINT i = 0; i < kParts; ++i)
        report[i] = TextOf(arguments.rgvarg[kParts - 1 - i]);
    return Append(report) ? S_OK : E_FAIL;
}

}  // namespace

HRESULT Reporter::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members)
{
    return sylvex::FindName(kMembers, names, count, members);
}

HRESULT Reporter::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                         UINT*)
{
    if (member == kErrorHandler && (flags & DISPATCH_METHOD) != 0) {
        try {
            return arguments ? TakeReport(*arguments) : E_INVALIDARG;
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }
    if (member != kAction || (flags & DISPATCH_PROPERTYGET) == 0) return DISP_E_MEMBERNOTFOUND;
    if (!result) return S_OK;
    V_VT(result) = VT_BSTR;
    V_BSTR(result) = SysAllocString(L"Continue");
    return V_BSTR(result) ? S_OK : E_OUTOFMEMORY;
}
