#include "host/options.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

#include "host/csv.h"

namespace sylvex::host {
namespace {

std::wstring PathOrNothing(std::wstring_view text)
{
    const auto path = ParseTreePath(text);
    return path ? path->Text() : L"(none)";
}

std::wstring ErrorOf(const std::vector<std::wstring>& arguments)
{
    try {
        ParseOptions(arguments);
        return L"(none)";
    } catch (const UsageError& error) {
        return error.Message();
    }
}

TEST(HostOptions, ReadsEveryOptionAndKeepsTheOrderOfChecks)
{
    std::wistringstream line(
        L"--open c:\\Docs --check C:\\Docs\\b.txt --check=C:\\Docs\\a.txt --patterns *.txt|*.doc "
        L"--file-filter=*.zip;*.txt --recursive off --drag-drop=on --csv - --ready-file r --exit "
        L"--untick-row C:\\Docs\\b.txt --find-row=x --path=c:/");
    const std::vector<std::wstring> arguments{std::istream_iterator<std::wstring, wchar_t>(line), {}};
    const Options options = ParseOptions(arguments);
    EXPECT_EQ(options.open->Text(), L"C:\\Docs");
    ASSERT_EQ(options.checks.size(), 2u);
    EXPECT_EQ(options.checks[0].Text(), L"C:\\Docs\\b.txt");
    EXPECT_EQ(options.checks[1].Text(), L"C:\\Docs\\a.txt");
    ASSERT_EQ(options.rows.size(), 2u);
    EXPECT_EQ(options.rows[0].what, RowCommand::Untick);
    EXPECT_EQ(options.rows[1].row, L"x");
    EXPECT_EQ(options.path->Text(), L"C:\\");
    EXPECT_EQ(options.patterns, L"*.txt|*.doc");
    EXPECT_EQ(options.fileFilter, L"*.zip;*.txt");
    EXPECT_FALSE(options.recursive);
    EXPECT_TRUE(options.dragDrop);
    EXPECT_EQ(options.csv, L"-");
    EXPECT_EQ(options.readyFile, L"r");
    EXPECT_TRUE(options.exit);
    EXPECT_FALSE(options.help);
}

TEST(HostOptions, AnEmptyPatternIsAValueAndNotTheSameAsNone)
{
    EXPECT_EQ(ParseOptions({L"--patterns="}).patterns, L"");
    EXPECT_EQ(ParseOptions({L"--patterns", L""}).patterns, L"");
    EXPECT_FALSE(ParseOptions({}).patterns.has_value());
    EXPECT_TRUE(ParseOptions({}).recursive);
    EXPECT_FALSE(ParseOptions({}).dragDrop);
    EXPECT_FALSE(ParseOptions({L"--check", L"C:\\a"}).Unattended());
    EXPECT_TRUE(ParseOptions({L"--csv", L"-"}).Unattended());
}

TEST(HostOptions, SaysWhatIsWrong)
{
    const std::pair<std::vector<std::wstring>, std::wstring> cases[] = {
        {{L"--opne", L"C:\\"}, L"unknown argument: --opne"},
        {{L"--exit", L"--check"}, L"--check needs a value"},
        {{L"--exit=1"}, L"--exit takes no value"},
        {{L"--recursive", L"yes"}, L"--recursive: on or off expected, not yes"},
        {{L"--csv="}, L"--csv: a file name is missing"},
        {{L"--path", L"a.txt"}, L"--path: not an absolute path with a drive: a.txt"},
    };
    for (const auto& [arguments, message] : cases)
        EXPECT_EQ(ErrorOf(arguments), message);
}

TEST(HostOptions, APathIsADriveAndNames)
{
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"z:", L"Z:\\"},
        {L"C:\\Docs\\a.txt", L"C:\\Docs\\a.txt"},
        {L"C:/Docs//Old/", L"C:\\Docs\\Old"},
        {L"C:\\Docs\\.\\Old\\..\\New", L"C:\\Docs\\New"},
        {L"C:\\a, b\\c:d", L"C:\\a, b\\c:d"},
        {L"C:\\..\\Docs", L"(none)"},
        {L"C:Docs", L"(none)"},
        {L"\\\\server\\share", L"(none)"},
        {L"1:\\Docs", L"(none)"},
        {L"", L"(none)"},
    };
    for (const auto& [text, path] : cases)
        EXPECT_EQ(PathOrNothing(text), path) << ToUtf8(text);
}

TEST(HostCsv, QuotesOnlyWhatNeedsIt)
{
    const Table table = {{L"nam", L"siz"}, {L"a b.txt", L"1,024"}, {L"say \"hi\"", L""}, {L"two\r\nlines", L" x "}};
    EXPECT_EQ(CsvText(table), L"nam,siz\r\na b.txt,\"1,024\"\r\n\"say \"\"hi\"\"\",\r\n\"two\r\nlines\", x \r\n");
    EXPECT_EQ(CsvText({}), L"");
    EXPECT_EQ(CsvText({{L"=1+1", L"+1", L"-1", L"@a", L"\t=1", L"\uFF1D1", L"a=1", L"=\"x\",1"}}),
              L"'=1+1,'+1,'-1,'@a,'\t=1,'\uFF1D1,a=1,\"'=\"\"x\"\",1\"\r\n");
}

TEST(HostCsv, WritesUtf8OfEveryPlaneFromEitherWideEncoding)
{
    EXPECT_EQ(ToUtf8(L"a\u00e9\u20ac"), "a\xC3\xA9\xE2\x82\xAC");
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(ToUtf8(pair), "\xF0\x9F\x98\x80");
    EXPECT_EQ(ToUtf8(L"\U0001F600"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(ToUtf8(pair.substr(0, 1) + L"a"),
              "\xEF\xBF\xBD"
              "a");
    EXPECT_EQ(ToUtf8(pair.substr(1)), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace sylvex::host
