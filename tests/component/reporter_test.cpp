#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/component/automation.h"
#include "tests/component/box_reader.h"
#include "tests/component/component_file.h"
#include "tests/component/test_reporter.h"

namespace sylvex::test {
namespace {

/// A failure two procedures deep: a tick without a list.
long FailTwoDeep(const Value& control)
{
    return ErrorOf([&] {
        const Value node = NodesOf(control).Get(L"Item", {1});
        control.Call(L"CheckNodeSelective", {node});
    });
}

constexpr const wchar_t* kTwoDeep = L"Sylvex.TV_NodeCheck 91; Sylvex.CheckNodeSelective 65535";

TEST(Reporter, GetsTheEightValuesOfEachProcedure)
{
    TestReporter reporter;
    const Value control = MakeControl();
    EXPECT_EQ(FailTwoDeep(control), kPassedOn);
    EXPECT_EQ(reporter.Trace(), kTwoDeep);
    EXPECT_EQ(reporter.actionsRead, 2);
    const auto& inner = reporter.reports.at(0);
    EXPECT_EQ(inner[0] + L" " + inner[1] + L" " + inner[4], L"SylvexControl 1.0.0 3");
    EXPECT_EQ(inner[6], L"Object variable or With block variable not set");
    EXPECT_TRUE(
        inner[7].starts_with(L"<Variables>\r\n<LocalVariables>\r\n{None}</LocalVariables>\r\n<ModuleVariables>\r\n"));
    EXPECT_TRUE(inner[7].ends_with(L"<Parameters>\r\n<Node>{Node Sylvex + [ *.zip ]}</Node></Parameters>"));
}

TEST(Reporter, ThatFailsOrHangsUpDoesNoHarm)
{
    TestReporter reporter;
    const Value control = MakeControl();
    for (const HRESULT answer : {E_FAIL, RPC_E_DISCONNECTED, static_cast<HRESULT>(0x800706BA), DISP_E_EXCEPTION}) {
        reporter.onReport = [=] { return answer; };
        EXPECT_EQ(FailTwoDeep(control), kPassedOn);
        reporter.asked = answer;
        EXPECT_EQ(FailTwoDeep(control), kPassedOn);
        reporter.asked = S_OK;
    }
    EXPECT_EQ(reporter.reports.size(), 8u);
    EXPECT_EQ(NodesOf(control).Get(L"Count").Number(), 1);
}

TEST(Reporter, MayCallTheControlAndLetGoOfIt)
{
    TestReporter reporter;
    Value control = MakeControl();
    reporter.onReport = [&] {
        EXPECT_EQ(FailTwoDeep(control), kPassedOn);
        return S_OK;
    };
    EXPECT_EQ(FailTwoDeep(control), kPassedOn);
    // What fails during a report is told too, but not what fails during the report of that.
    EXPECT_EQ(reporter.reports.size(), 6u);
    reporter.reports.clear();
    reporter.onReport = [&] { return control = Value(), S_OK; };
    {
        const Value node = NodesOf(control).Get(L"Item", {1});
        EXPECT_EQ(ErrorOf([&] { control.Call(L"CheckNodeSelective", {node}); }), kPassedOn);
    }
    EXPECT_EQ(reporter.Trace(), kTwoDeep);
    EXPECT_FALSE(ComponentIsBusy());
}

TEST(Reporter, SeesAValueThatAPropertyRefused)
{
    TestReporter reporter;
    const Value control = MakeControl();
    EXPECT_EQ(ErrorOf([&] { control.Set(L"ReqListView", L"<my list>"); }), 13);
    EXPECT_EQ(reporter.Trace(), L"Sylvex.ReqListView 13");
    EXPECT_TRUE(
        reporter.reports.at(0)[7].ends_with(L"<New_ReqListView>&lt;my list&gt;</New_ReqListView></Parameters>"));
}

TEST(Reporter, WithoutOneEachProcedureShowsItsBox)
{
    const Value control = MakeControl();
    BoxReader boxes;
    EXPECT_EQ(FailTwoDeep(control), kPassedOn);
    const std::wstring sorry =
        L"[SylvexControl has encountered a problem. We are sorry for the inconvenience.\r\n\r\n"
        L"Module: Sylvex\r\nProcedure: ";
    EXPECT_EQ(boxes.Take(),
              sorry + L"TV_NodeCheck\r\nLine Number: 3\r\n\r\nObject variable or With block variable not set (91)]" +
                  sorry +
                  L"CheckNodeSelective\r\nLine Number: 1\r\n\r\nApplication-defined or object-defined error (65535)]");
}

/// The sample reporter, registered while it lives, with a file of its own.
class Sample {
public:
    Sample()
    {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        m_file = std::wstring(folder) + L"SylvexReportTest.txt";
        DeleteFileW(m_file.c_str());
        SetEnvironmentVariableW(L"SYLVEX_REPORTS", m_file.c_str());
    }
    ~Sample()
    {
        EXPECT_EQ(file.Unregister(), S_OK);
        SetEnvironmentVariableW(L"SYLVEX_REPORTS", nullptr);
        for (const wchar_t* const ending : {L"", L".old", L".link"})
            DeleteFileW((m_file + ending).c_str());
        EXPECT_EQ(file.CanUnloadNow(), S_OK);
    }
    void Grow(unsigned size) const { std::filesystem::resize_file(m_file, size); }
    void Link() const { std::filesystem::create_hard_link(m_file, m_file + L".link"); }
    std::string Text() const
    {
        std::ifstream text(std::filesystem::path(m_file), std::ios::binary);
        return {std::istreambuf_iterator<char>(text), {}};
    }

    const ComponentFile file{BesideComponent(L"SylvexReporter.dll")};

private:
    std::wstring m_file;
};

TEST(SampleReporter, WritesWhatFailedToItsFile)
{
    const Sample sample;
    ASSERT_EQ(sample.file.Register(), S_OK);
    const Value control = MakeControl();
    control.Put(L"FileFilter", L"*.\u00E9");
    EXPECT_EQ(FailTwoDeep(control), kPassedOn);
    const std::string text = sample.Text();
    const std::size_t inner = text.find(" SylvexControl 1.0.0 Sylvex.TV_NodeCheck, line 3: error 91, Object variable");
    const std::size_t outer = text.find(" SylvexControl 1.0.0 Sylvex.CheckNodeSelective, line 1: error 65535, ");
    EXPECT_NE(inner, std::string::npos) << text;
    EXPECT_TRUE(outer != std::string::npos && outer > inner);
    EXPECT_NE(text.find("<m_FileFilter>*.\xC3\xA9</m_FileFilter>"), std::string::npos);
    EXPECT_TRUE(text.ends_with("</Parameters>\r\n\r\n"));
    sample.Grow(1024 * 1024);
    EXPECT_EQ(FailTwoDeep(control), kPassedOn);
    EXPECT_EQ(sample.Text().size(), text.size());
    // A file with a second name may be anybody's.
    sample.Link();
    EXPECT_EQ(FailTwoDeep(control), kPassedOn);
    EXPECT_EQ(sample.Text().size(), text.size());
}

}  // namespace
}  // namespace sylvex::test
