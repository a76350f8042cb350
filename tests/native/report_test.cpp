#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "tests/support/desk_simulated.h"
#include "tests/support/scene.h"

namespace sylvex {
namespace {

std::string Narrow(const std::wstring& text)
{
    return {text.begin(), text.end()};
}

/// The report as a reader sees it: a heading of the other seven values, and the variables, lines ended as on paper.
std::string Told(const ErrorReport& report)
{
    std::wstring lines = report.variables;
    for (std::size_t at = 0; (at = lines.find(L'\n', at)) != std::wstring::npos;) {
        EXPECT_EQ(lines[at - 1], L'\r');
        lines.erase(at - 1, 1);
    }
    return Narrow(report.component + L" " + report.version + L": " + report.module + L"." + report.procedure +
                  L", line " + std::to_wstring(report.line) + L": " + report.description + L" (" +
                  std::to_wstring(report.number) + L")\n" + lines + L"\n");
}

constexpr const char* kModule =
    "<ModuleVariables>\n"
    "<WinDir></WinDir><SysDir></SysDir><TempDir></TempDir><SourcePath></SourcePath><sFolder></sFolder><sName></sName>"
    "<sExtension></sExtension><sSize></sSize><sType></sType><sModified></sModified><sTime></sTime><sCreated></sCreated>"
    "<sAccessed></sAccessed><sAttribute></sAttribute><sMsDos></sMsDos><sNone></sNone><IsFAT>False</IsFAT>"
    "<TypeNew>{Cannot dump UDT arrays}</TypeNew><DragImage>0</DragImage><Buffer></Buffer><FullPath></FullPath>"
    "<sNodeText></sNodeText><SylvexFilter><Element Index=\"0\">*.zip</Element><Element "
    "Index=\"1\">&lt;&amp;&gt;</Element>"
    "</SylvexFilter><nodX>{Nothing}</nodX><m_hwndTV>65538</m_hwndTV><m_himlDrag>0</m_himlDrag><m_hitemDrag>0</"
    "m_hitemDrag>"
    "<m_cxyAutoScroll>32</m_cxyAutoScroll><m_iButton>0</m_iButton><m_nodDrag>{Nothing}</m_nodDrag><m_szDrag>{SIZE}"
    "</m_szDrag><m_ptBtnDown>{POINTAPI}</m_ptBtnDown><m_ptHotSpot>{POINTAPI}</m_ptHotSpot>"
    "<m_DragDropEnable>False</m_DragDropEnable><m_FileFilter>*.zip;&lt;&amp;&gt;</m_FileFilter><m_hWnd>0</m_hWnd>"
    "<m_Path></m_Path><m_MyDocs>C:\\My Documents</m_MyDocs><m_ReqListView>{Nothing}</m_ReqListView>"
    "<m_RecursiveCheck>True</m_RecursiveCheck><InSetNodeChecked>False</InSetNodeChecked><InClear>False</InClear>"
    "<m_BuildFileListFilter><Element Index=\"0\">*</Element></m_BuildFileListFilter></ModuleVariables>\n";

std::string Globals(const std::string& number, const std::string& description, const std::string& line)
{
    return "<GlobalVariables>\n<InTreeSetParent>False</InTreeSetParent><m_Sylvex>{Sylvex}</m_Sylvex><Buffer></Buffer>"
           "<f_Type></f_Type><LVI>{LVITEM}</LVI><Master>{Nothing}</Master><SFI>{SHFILEINFO}</SFI>"
           "<g_hBoldFont>0</g_hBoldFont><vantorComponentID>0</vantorComponentID>"
           "<vantorHasInitialised>False</vantorHasInitialised><vantorErrorNumber>" +
           number + "</vantorErrorNumber><vantorErrorDescription>" + description +
           "</vantorErrorDescription><vantorErrorLine>" + line +
           "</vantorErrorLine><vantorErrorSource>Sylvex</vantorErrorSource></GlobalVariables>\n</Variables>\n";
}

std::string Report(const std::string& procedure, const std::string& line, const std::string& number,
                   const std::string& description, const std::string& locals, const std::string& parameters)
{
    return "SylvexControl 1.0.0: Sylvex." + procedure + ", line " + line + ": " + description + " (" + number +
           ")\n<Variables>\n<LocalVariables>\n" + locals + "</LocalVariables>\n" + kModule +
           Globals(number, description, line) + "<Parameters>\n" + parameters + "</Parameters>\n";
}

using Deed = std::function<void(Scene&)>;

SimulatedDesktop& DesktopOf(Scene& scene)
{
    return dynamic_cast<SimulatedDesk&>(scene.desk()).desktop;
}

/// A scene in which the first such call that `act` leads to has failed.
std::unique_ptr<Scene> FailAt(const char* call, const Deed& prepare, const Deed& act)
{
    constexpr long kMost = 2000;
    for (long number = 1; number < kMost; ++number) {
        auto scene = std::make_unique<Scene>();
        DesktopOf(*scene).reporter.Install(L"Continue");
        prepare(*scene);
        DesktopOf(*scene).gate.FailCall(number, {70, L"Permission denied"});
        const long error = ErrorOf([&] { act(*scene); });
        if (DesktopOf(*scene).gate.Failed() != call) continue;
        EXPECT_EQ(error, 65535);
        return scene;
    }
    ADD_FAILURE() << "no call of " << call;
    return std::make_unique<Scene>();
}

TEST(ReportTest, AFailureThreeProceduresDeepIsToldLevelByLevel)
{
    const auto scene = FailAt(
        "FileSystem::Search", [](Scene& at) { at.control().LetFileFilter(L"*.zip;<&>"); },
        [](Scene& at) { at.control().Enumerate(); });
    const auto& reports = DesktopOf(*scene).reporter.Reports();
    ASSERT_EQ(reports.size(), 3u);
    const std::string passedOn = "Application-defined or object-defined error";
    EXPECT_EQ(Told(reports[0]),
              Report("hasSubDirectory", "1", "70", "Permission denied", "{None}", "<sPath>C:\\My Documents</sPath>"));
    EXPECT_EQ(Told(reports[1]),
              Report("LoadTree6", "6", "65535", passedOn,
                     "<FirstFixed>0</FirstFixed><DrvBitMask>0</DrvBitMask><MaxPwr>0</MaxPwr><Pwr>0</Pwr>"
                     "<DriveType>0</DriveType><MyDrive></MyDrive><MyPic></MyPic><MyKey>C:\\My Documents\\</MyKey>"
                     "<nod1>{Node My Documents}</nod1><si>{SHFILEINFO}</si><rc>{RECT}</rc>",
                     "{None}"));
    EXPECT_EQ(Told(reports[2]), Report("Enumerate", "3", "65535", passedOn, "{None}", "{None}"));
}

/// What a report says of a procedure of this name that has just failed: module, locals and parameters.
std::string ToldOf(Scene& scene, const std::wstring& procedure)
{
    const auto& reports = DesktopOf(scene).reporter.Reports();
    for (auto at = reports.rbegin(); at != reports.rend(); ++at) {
        if (at->procedure != procedure) continue;
        const auto between = [&](const std::wstring& open, const std::wstring& close) {
            const std::size_t from = at->variables.find(open) + open.size() + 2;
            return at->variables.substr(from, at->variables.find(close) - from);
        };
        return Narrow(at->module + L" | " + between(L"<LocalVariables>", L"</LocalVariables>") + L" | " +
                      between(L"<Parameters>", L"</Parameters>"));
    }
    return "no report";
}

TEST(ReportTest, ProceduresTellWhatTheyWorkedOn)
{
    const Deed load = [](Scene& at) {
        at.desk().Make({L"a\\b\\", L"a\\f.txt"});
        DesktopOf(at).system.SetVersion({2, 5, 0});  // files have pictures of their own
        at.BindList();
        at.Enumerate();
    };
    const Deed open = [](Scene& at) { at.At(L"a/f.txt"); };
    const Deed loadAndOpen = [&](Scene& at) { load(at), open(at); };
    const Deed tick = [](Scene& at) { at.Tick(at.At(L"a/f.txt"), true); };

    auto scene = FailAt("Shell::FileIcon", load, open);
    EXPECT_EQ(ToldOf(*scene, L"EnumFilesUnder"),
              "Sylvex | <sPath>C:\\Scratch\\a\\</sPath><sExt>txt</sExt><hFind>0</hFind><oldPath>f.txt</oldPath>"
              "<W32FD>{WIN32_FIND_DATA}</W32FD><si>{SHFILEINFO}</si><hIcon>0</hIcon><FolderPic>{Nothing}</FolderPic>"
              "<TempNode>{Nothing}</TempNode><n2>{Node}</n2><L4>1</L4><n>{Node a}</n> | <n>{Node a}</n>");
    EXPECT_EQ(ToldOf(*scene, L"TV_Expand"),
              "Sylvex | <blnChecked>False</blnChecked><SearchString></SearchString> | <Node>{Node a}</Node>");
    scene = FailAt("System::Version", load, open);
    EXPECT_EQ(ToldOf(*scene, L"getVersion"), "modVersion | {None} | {None}");
    scene = FailAt("Shell::SystemIconIndexOfType", loadAndOpen, tick);
    EXPECT_EQ(ToldOf(*scene, L"BuildFileList"),
              "Sylvex | <sPath>C:\\Scratch\\a\\f.txt</sPath> | <pNode>{Node Desktop}</pNode>"
              "<RecursiveCall>False</RecursiveCall>");
    scene = FailAt("Regional::LocalFileTime", loadAndOpen, tick);
    EXPECT_TRUE(ToldOf(*scene, L"UTCCurrToVbDate").starts_with("modSylvexDeclares | {None} | <UTC>"));
    scene = FailAt(
        "Shell::DisplayName", [](Scene&) {}, [](Scene& at) { at.control().Enumerate(); });
    EXPECT_EQ(ToldOf(*scene, L"LoadTree6"),
              "Sylvex | <FirstFixed>0</FirstFixed><DrvBitMask>13</DrvBitMask><MaxPwr>3</MaxPwr><Pwr>0</Pwr>"
              "<DriveType>2</DriveType><MyDrive>A:\\</MyDrive><MyPic>f35</MyPic><MyKey>A:\\</MyKey>"
              "<nod1>{Node My Computer}</nod1><si>{SHFILEINFO}</si><rc>{RECT}</rc> | {None}");
}

TEST(ReportTest, ForeignExceptionsBecomeTheNearestNumber)
{
    Scene scene;
    DesktopOf(scene).reporter.Install(L"");
    const auto told = [&](const auto& body) {
        EXPECT_EQ(ErrorOf([&] { Trapped(scene.control().State(), L"P", kNone, kNone, body); }), 65535);
        return DesktopOf(scene).reporter.Reports().back().number;
    };
    EXPECT_EQ(told([](int&) { throw std::bad_alloc(); }), 7);
    EXPECT_EQ(told([](int&) { std::wstring().at(1); }), 9);
}

/// What a variable of that value is rendered as.
template <class Value>
std::string Rendered(const Value& value, Dump::Of of = Dump::Of::Variables)
{
    Dump dump(of);
    dump.Add("v", value);
    const std::string text = Narrow(dump.Text());
    EXPECT_TRUE(text.starts_with("<v>") && text.ends_with("</v>"));
    return text.substr(3, text.size() - 7);
}

TEST(DumpTest, ValuesReadTheSameEverywhere)
{
    EXPECT_EQ(Rendered(0.1), "0.1");
    EXPECT_EQ(Rendered(-1.5e300), "-1.5e+300");
    EXPECT_EQ(Rendered(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(Rendered(short{-7}), "-7");
    EXPECT_EQ(Rendered(true), "True");
    EXPECT_EQ(Rendered(Currency{0}), "0");
    EXPECT_EQ(Rendered(Currency{-5}), "-0.0005");
    EXPECT_EQ(Rendered(Currency{12'340'000}), "1234");
    EXPECT_EQ(Rendered(Currency{std::numeric_limits<std::int64_t>::min()}), "-922337203685477.5808");
    EXPECT_EQ(Rendered(Date{0}), "1899-12-30 00:00:00");
    EXPECT_EQ(Rendered(Date{46342.25}), "2026-11-16 06:00:00");
    EXPECT_EQ(Rendered(Date{-1.25}), "1899-12-29 06:00:00");
    EXPECT_EQ(Rendered(Date{46342.9999999}), "2026-11-17 00:00:00");
    EXPECT_EQ(Rendered(Date{1e9}), "1e+09");
    EXPECT_EQ(Rendered(Point{1, 2}), "{POINTAPI}");
    EXPECT_EQ(Rendered(Point{1, 2}, Dump::Of::Parameters), "{Can't dump UDT parameters}");
    EXPECT_EQ(Rendered(static_cast<Node*>(nullptr)), "{Nothing}");
    EXPECT_EQ(Rendered(ObjectRef()), "{Nothing}");
}

TEST(DumpTest, NothingInATextIsTakenForTheReportsOwn)
{
    EXPECT_EQ(Rendered(std::wstring(L"</v><x>&{Null}")), "&lt;/v&gt;&lt;x&gt;&amp;&#123;Null&#125;");
    EXPECT_EQ(Rendered(std::wstring(L"a\0b\r\n\x1B\x85", 7)), "a{U+0000}b{U+000D}{U+000A}{U+001B}{U+0085}");
    EXPECT_EQ(Rendered(std::wstring{L'\x202E', L'\xFFFF'}), "{U+202E}{U+FFFF}");
    EXPECT_EQ(Rendered(std::wstring{L'x', wchar_t(0xD83D)}), "x{U+D83D}");
    EXPECT_EQ(Rendered(std::wstring{wchar_t(0xDC00), wchar_t(0xD800)}), "{U+DC00}{U+D800}");
    ValueText pair;
    pair.Text(std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)});
    EXPECT_EQ(pair.Get(), (std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)}));
}

TEST(DumpTest, IsBounded)
{
    const std::string text = Rendered(std::wstring(5000, L'<'));
    EXPECT_EQ(text.size(), 4096 * 4 + std::string("{Dump truncated at 4096 characters}").size());
    EXPECT_TRUE(text.ends_with("&lt;{Dump truncated at 4096 characters}"));
    EXPECT_TRUE(Rendered(std::vector<int>(300, 1))
                    .ends_with("<Element Index=\"199\">1</Element>{Dump truncated at 200 elements}"));
    EXPECT_TRUE(
        Rendered(std::vector<std::wstring>(9, std::wstring(5000, L'a'))).ends_with("{Dump truncated at 8 elements}"));
    EXPECT_EQ(Rendered(std::vector<int>()), "{UnInitialised Array}");
    Dump dump;
    for (int i = 0; i < 100; ++i)
        dump.Add("v", std::wstring(4096, L'a'));
    EXPECT_LT(dump.Text().size(), 300000u);
    EXPECT_TRUE(dump.Text().ends_with(L"<v>{Dump truncated at 262144 characters}</v>"));
}

struct FailingValue {
    void ReportTo(ValueText& report) const
    {
        report.BeginElement(L"0");
        throw RuntimeError{438, L"Object doesn't support this property or method"};
    }
};

TEST(DumpTest, AValueThatFailsLeavesTheOthersAlone)
{
    Dump dump;
    dump.Add("a", 1);
    dump.Add("b", FailingValue());
    dump.Add("c", 3);
    EXPECT_EQ(dump.Text(), L"<a>1</a><b>{Error 438 formatting for output}</b><c>3</c>");
}

}  // namespace
}  // namespace sylvex
